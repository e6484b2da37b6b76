; RENUM, in the extension ROM.
        .include "memory.inc"
        .include "basic.inc"
        .globl  renumber
        .section .ext,"x"

; Gives the lines the numbers RANGELOW, RANGELOW + RANGEHIGH, ... and changes what refers to them; what refers
; to no line stays. CF = 1, and nothing changed, if the numbers don't suffice. Changes everything.
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

renum2: ld      de,(PROGSTART)
renum3: ld      a,(de)
        or      a
        jr      z,renum5
        inc     de
        inc     de
        inc     de
renum4: sys     skip_token
        or      a
        jr      z,renum3
        cp      TK_LINE
        jr      nz,renum4
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
        jr      renum4

renum5: ld      de,(PROGSTART)
        ld      hl,(RANGELOW)
renum6: ld      a,(de)
        or      a
        ret     z
        push    hl
        ld      l,a
        ld      h,0
        add     hl,de
        ex      (sp),hl                 ; stack: next line
        inc     de
        ld      a,l
        ld      (de),a
        inc     de
        ld      a,h
        ld      (de),a
        ld      bc,(RANGEHIGH)
        add     hl,bc
        pop     de
        jr      renum6

; HL = new number of line BC, CF = 1 if there is none. Keeps BC, DE.
new_number:
        push    de
        ld      hl,(RANGELOW)
        ld      de,(PROGSTART)
new1:   ld      a,(de)
        or      a
        scf
        jr      z,new4
        push    hl
        ld      l,a
        ld      h,0
        add     hl,de
        ex      (sp),hl                 ; stack: next line
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
