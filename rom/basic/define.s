; DEF FN and the functions it makes; DEFSTR.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  st_def, fn_fn, st_defstr
        .text

; DEF FN name [(parameter, ...)] = expression. The function is a variable of a kind of its own, which holds the
; address of its marker in the program.
st_def: expect  TK_FN
        ld      hl,(CURLINE)
        ld      a,h
        or      l
        jr      z,def_direct
        push    de
        ld      a,(de)
        inc     de
        call    fn_marker
        call    find_var
        jr      nc,def1
        ld      a,c
        ld      bc,2
        call    make_var
def1:   pop     bc
        ld      (hl),c
        inc     hl
        ld      (hl),b
        jp      skip_statement
def_direct:
        raise   E_DIRECT

; C = kind of the function whose name has the marker A, CF = 1 when a bracket follows. Keeps A, B, DE, HL.
fn_marker:
        ld      c,TK_VINT + 0x20
        cp      TK_VINT
        ret     z
        cp      TK_AINT
        scf
        ret     z
        cp      TK_TEXT
        jp      nc,fn_syntax
        or      a
        jp      z,fn_syntax
        ld      c,a
        cp      TK_ANUM
        ccf
        jr      nc,marker1
        dec     c
        dec     c
marker1:
        set     5,c
        ret

; FN name [(value, ...)]. All values are there before they change places with the parameters, which get back what
; they had when the function is through. Stack: kind, STRTOP, definition, 6 bytes a value, the last one on top.
fn_fn:  ld      a,(de)
        call    fn_marker
        ld      b,a
        push    af
        inc     de
        call    find_var
        jp      c,fn_undefined
        load_hl
        ld      a,b
        cp      (hl)
        jp      nz,fn_syntax
        call    fn_skip
        pop     af                      ; CF = 1: with parameters
        push    bc
        ld      bc,(STRTOP)
        push    bc
        push    hl
        ld      c,0
        jr      nc,fn_bind
fn_value:
        push    bc
        push    hl
        call    expr_room
        call    eval
        pop     hl
        pop     bc
        ld      a,(hl)
        jr      nc,fn_string
        cp      TK_VINT
        call    z,facc_round
        jr      z,fn_number
        dec     a
        jr      nz,fn_type
fn_number:
        push    hl
        ld      hl,(FACC + 4)
        ex      (sp),hl
        push    hl
        ld      hl,(FACC + 2)
        ex      (sp),hl
        push    hl
        ld      hl,(FACC)
        ex      (sp),hl
        jr      fn_next
fn_string:
        cp      TK_VSTR
        jr      nz,fn_type
        push    hl
        push    hl
        push    hl
        ld      hl,(STRTOP)             ; the place of the pending string
        ex      (sp),hl
        push    hl
        call    str_push
        pop     hl
fn_next:
        inc     c
        call    fn_skip
        ld      a,(de)
        cp      (hl)
        jr      nz,fn_syntax
        inc     de
        inc     hl
        cp      ','
        jr      z,fn_value
        cp      ')'
        jr      nz,fn_syntax

; C values, HL = the definition behind the parameters.
fn_bind:
        push    hl
        ld      b,0
        ld      h,b
        ld      l,c
        add     hl,hl
        add     hl,bc
        add     hl,hl
        inc     hl
        inc     hl
        add     hl,sp                   ; the place of the definition's address
        pop     bc
        push    de                      ; where the text goes on
        push    hl
        push    bc
        scf
        call    fn_exchange
        pop     de
        expect  TK_EQ
        call    eval
        pop     hl
        push    af
        push    hl
        or      a
        call    fn_exchange
        pop     hl
        pop     af
        pop     de
        ld      sp,hl
        pop     hl
        pop     hl
        ld      (STRTOP),hl
        pop     bc
        ld      a,c
        jr      nc,fn_result
        cp      TK_VINT + 0x20
        call    z,facc_round
        cp      TK_VSTR + 0x20
        jr      z,fn_type
        pop     bc
        jp      eval_done
fn_result:
        cp      TK_VSTR + 0x20
        jr      nz,fn_type
        pop     bc
        jp      eval_text
fn_type:
        jp      type_error
fn_syntax:
        jp      syntax_error
fn_undefined:
        raise   E_FUNCTION

; HL behind the name that begins behind HL. Changes A.
fn_skip:
        inc     hl
        ld      a,(hl)
        add     a,a
        jr      nc,fn_skip
        inc     hl
        ret

; Exchanges the values whose end is at HL, where the address of the first parameter stands, and the parameters.
; CF = 1: the strings become those of the parameters, else the latter have them already. Changes everything but
; the number and string values when CF = 0.
fn_exchange:
        push    af
        ld      e,(hl)
        inc     hl
        ld      d,(hl)
        dec     hl
        push    hl
        pop     ix
exchange1:
        ld      a,(de)
        cp      TK_EQ
        jr      z,exchange_end
        cp      ','
        jr      nz,exchange2
        inc     de
exchange2:
        ld      bc,-6
        add     ix,bc
        call    lvalue
        push    de
        push    ix
        pop     de
        cp      1
        ld      b,6
        jr      z,exchange3
        inc     de
        ld      b,2
        jr      nc,exchange3
        dec     de
        ld      a,(de)
        ld      c,a
        inc     de
        ld      a,(de)
        ld      d,a
        ld      e,c                     ; the pending string
        pop     bc
        pop     af
        push    af
        push    bc
        ld      b,3
        jr      nc,exchange3
        push    hl                      ; it becomes the parameter's, whose own waits in its place
        ld      a,(de)
        ld      (SLEN),a
        ld      c,(hl)
        ex      de,hl
        ld      (hl),c
        inc     hl
        inc     de
        ld      a,(de)
        ld      c,(hl)
        ld      (hl),a
        inc     hl
        inc     de
        ld      a,(de)
        ld      b,(hl)
        ld      (hl),a
        ld      (SADDR),bc
        pop     hl
        call    str_assign
        jr      exchange4
exchange3:
        exchange_byte
        djnz    exchange3
exchange4:
        pop     de
        ld      a,(de)
        cp      ')'
        jr      nz,exchange1
exchange_end:
        pop     af
        ret

; DEFSTR letter[-letter], ...
st_defstr:
        ext     defstr
        ret
