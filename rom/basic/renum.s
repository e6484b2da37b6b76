; RENUM, in the extension ROM.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  renum_command
        .section .ext,"x"

; The address of the line behind the one at DE, whose length is A, goes to the stack. Keeps HL.
        .macro  keep_next_line
        push    hl
        ld      l,a
        ld      h,0
        add     hl,de
        ex      (sp),hl
        .endm

; What stands behind RENUM at DE, carried out. Changes everything.
renum_command:
        ld      hl,10
        ld      (RANGELOW),hl
        ld      (RANGEHIGH),hl
        sys     at_end
        jr      z,command1
        call    literal
        ld      (RANGELOW),hl
        ld      a,(de)
        cp      ','
        jr      nz,command1
        inc     de
        call    literal
        ld      (RANGEHIGH),hl
command1:
        sys     must_end
        call    check_program
        call    renumber
        jr      c,command2
        sys     clear
        ret
command2:
        raise   E_QUANTITY

; HL = the constant at DE, 0 to 65535; nothing else will do.
literal:
        ld      a,(de)
        cp      TK_INT
        jr      z,literal1
        cp      TK_NUM
        jr      c,literal2
        cp      ' '
        jr      nc,literal2
literal1:
        ld      b,0xFF
        sys     eval_value
        sys     facc_int
        ret
literal2:
        sys     syntax_error

; Gives the lines the numbers RANGELOW, RANGELOW + RANGEHIGH, ... and changes what refers to them; what refers
; to no line stays. CF = 1, and nothing changed, if the numbers don't suffice; an error, and nothing changed, if a
; line would have more characters than the editor takes. Changes everything.
renumber:
        ld      hl,(RANGEHIGH)
        ld      a,h
        or      l
        jr      z,renum_bad
        ld      de,(PROGSTART)
        ld      hl,(RANGELOW)
renum1: ld      a,(de)
        or      a
        jr      z,renum2
        add     a,e
        ld      e,a
        jr      nc,renum_next
        inc     d
renum_next:
        ld      a,(de)
        or      a
        jr      z,renum2
        ld      bc,(RANGEHIGH)
        add     hl,bc
        jr      nc,renum1
renum_bad:
        scf
        ret

renum2: ld      de,(PROGSTART)          ; each line with its new numbers, as a trial
        ld      hl,(RANGELOW)
renum3: ld      a,(de)
        or      a
        jr      z,renum4
        push    hl
        push    de
        ld      l,e
        ld      h,d
        ld      de,TOKENBUF
        ld      c,a
        ld      b,0
        ldir
        ex      (sp),hl                 ; stack: next line
        pop     de
        pop     hl
        push    hl
        push    de
        ld      (TOKENBUF + 1),hl
        ld      de,TOKENBUF + 3
        call    renum_refs
        call    list_length
        pop     de
        pop     hl
        ld      bc,(RANGEHIGH)
        add     hl,bc
        jr      renum3

renum4: ld      de,(PROGSTART)
renum5: ld      a,(de)
        or      a
        jr      z,renum6
        inc     de
        inc     de
        inc     de
        call    renum_refs
        jr      renum5

; New numbers in the line's tokens at DE; DE behind its 0. Changes everything else.
renum_refs:
        sys     skip_token
        or      a
        ret     z
        cp      TK_LINE
        jr      nz,renum_refs
        push    de
        dec     de
        ld      a,(de)
        ld      b,a
        dec     de
        ld      a,(de)
        ld      c,a
        call    new_number
        jr      c,renum_same
        ex      de,hl
        ld      (hl),e
        inc     hl
        ld      (hl),d
renum_same:
        pop     de
        jr      renum_refs

renum6: ld      de,(PROGSTART)
        ld      hl,(RANGELOW)
renum7: ld      a,(de)
        or      a
        ret     z
        keep_next_line
        inc     de
        ld      a,l
        ld      (de),a
        inc     de
        ld      a,h
        ld      (de),a
        ld      bc,(RANGEHIGH)
        add     hl,bc
        pop     de
        jr      renum7

; HL = new number of line BC, CF = 1 if there is none. Keeps BC, DE.
new_number:
        push    de
        ld      hl,(RANGELOW)
        ld      de,(PROGSTART)
new1:   ld      a,(de)
        or      a
        scf
        jr      z,new4
        keep_next_line
        inc     de
        ld      a,(de)
        cp      c
        jr      nz,new2
        inc     de
        ld      a,(de)
        cp      b
        jr      z,new3
new2:   push    bc
        ld      bc,(RANGEHIGH)
        add     hl,bc
        pop     bc
        pop     de
        jr      new1
new3:   pop     de
        or      a
new4:   pop     de
        ret
