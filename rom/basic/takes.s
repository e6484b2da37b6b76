; SWAP, MID$ that takes something, DEFSTR, in the extension ROM.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  swap, mid_take, defstr
        .section .ext,"x"

; The token at DE must be the byte behind the CALL. DE behind it. Changes A.
        .macro  xexpect token
        call    must_be
        .byte   \token
        .endm
must_be:
        ex      (sp),hl
        ld      a,(de)
        cp      (hl)
        inc     hl
        ex      (sp),hl
        inc     de
        ret     z
        sys     syntax_error

; SWAP variable, variable of the same kind
swap:
        sys     lvalue
        push    hl
        push    af
        xexpect ','
        sys     lvalue
        pop     bc
        cp      b
        jp      nz,swap_type
        pop     bc
        push    de
        ld      d,b
        ld      e,c
        push    af
        push    de
        push    hl
        cp      1
        ld      b,3
        jr      c,swap1
        ld      b,6
        jr      z,swap1
        ld      b,2
swap1:  exchange_byte
        djnz    swap1
        pop     hl
        pop     de
        pop     af
        or      a
        call    z,swap_owner
        ex      de,hl
        call    z,swap_owner
        pop     de
        ret
; The string of the descriptor HL, if it is in the heap, belongs to it. Keeps F, DE, HL.
swap_owner:
        push    af
        push    de
        push    hl
        ld      c,(hl)
        inc     hl
        ld      e,(hl)
        inc     hl
        ld      d,(hl)
        ld      hl,(HEAPLOW)
        scf
        sbc     hl,de                   ; CF = 0: below the heap
        pop     hl
        jr      nc,owner1
        ld      a,c
        or      a
        jr      z,owner1
        ex      de,hl
        ld      b,0
        add     hl,bc
        ld      (hl),e
        inc     hl
        ld      (hl),d
        ex      de,hl
owner1: pop     de
        pop     af
        ret
swap_type:
        sys     type_error

; MID$(string variable, from [, number]) = string: as many of its characters as there are on both sides.
mid_take:
        xexpect '('
        sys     lvalue
        or      a
        jp      nz,swap_type
        push    hl
        xexpect ','
        sys     eval_byte
        dec     a
        ld      b,a
        ld      c,255
        ld      a,(de)
        cp      ','
        jr      nz,mid1
        inc     de
        push    bc
        sys     eval_byte
        pop     bc
        ld      c,a
mid1:   push    bc
        xexpect ')'
        xexpect TK_EQ
        sys     eval_str
        sys     str_push
        pop     bc
        pop     hl
        ld      a,(hl)                  ; characters from there on
        sub     b
        jr      c,mid_bad
        jr      z,mid_bad
        cp      c
        jr      nc,mid2
        ld      c,a
mid2:   push    bc
        push    hl
        ld      a,(hl)
        ld      (SLEN),a
        inc     hl
        ld      c,(hl)
        inc     hl
        ld      b,(hl)
        ld      (SADDR),bc
        sys     copy_value              ; it may be a constant, or another's
        pop     hl
        push    hl
        sys     str_assign
        pop     hl
        inc     hl
        load_hl
        pop     bc
        push    bc
        ld      c,b
        ld      b,0
        add     hl,bc
        pop     bc
        push    de
        ex      de,hl
        sys     str_pop
        cp      c
        jr      nc,mid3
        ld      c,a
mid3:   ld      b,0
        ld      a,c
        or      a
        jr      z,mid4
        ldir
mid4:   pop     de
        ret
mid_bad:
        sys     bad_value

; DEFSTR letter[-letter], ...: the program's names that begin so get their $.
defstr:
        call    letter
        ld      b,a
        ld      c,a
        ld      a,(de)
        cp      TK_MINUS
        jr      nz,defstr1
        inc     de
        call    letter
        ld      c,a
defstr1:
        push    de
        ld      de,(PROGSTART)
defstr2:
        ld      a,(de)
        or      a
        jr      z,defstr6
        inc     de
        inc     de
defstr3:
        inc     de
defstr4:
        ld      a,(de)
        cp      TK_DEFSTR
        jr      z,defstr5
        cp      TK_VNUM
        jr      z,defstr7
        cp      TK_ANUM
        jr      nz,defstr8
defstr7:
        inc     de
        ld      a,(de)
        dec     de
        and     0x7F
        cp      b
        jr      c,defstr8
        cp      c
        jr      z,defstr9
        jr      nc,defstr8
defstr9:
        ld      a,(de)                  ; TK_VSTR, TK_ASTR
        inc     a
        ld      (de),a
defstr8:
        sys     skip_token
        or      a
        jr      nz,defstr4
        jr      defstr2
defstr5:
        inc     de
        sys     skip_statement
        jr      defstr4
defstr6:
        pop     de
        ld      a,(de)
        cp      ','
        ret     nz
        inc     de
        jr      defstr

; A = the letter at DE, a name.
letter: ld      a,(de)
        dec     a
        jr      nz,fn_syntax1
        inc     de
        ld      a,(de)
        inc     de
        sub     0x80
        jr      c,fn_syntax1            ; more than one
        ret
fn_syntax1:
        sys     syntax_error
