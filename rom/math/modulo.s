; Remainders. In the extension ROM.
        .include "math/math.inc"
        .globl  x_mod
        .section .ext,"x"

; FACC = number at HL MOD FACC: what is left of it below a multiple of FACC, exactly; where rounding would make it
; FACC itself, the number next to it. Has the sign of FACC.
x_mod:  push    hl
        sys     make_float
        or      a
        jr      nz,1f
        raise   E_DIVISION
1:      ld      hl,FTEMP
        sys     fp_store
        pop     hl
        sys     fp_load
        sys     make_float
        or      a
        ret     z
        ld      hl,FACC + 1
        ld      a,(hl)
        push    af                      ; the sign of the left one
        res     7,(hl)
        ld      hl,FTEMP
        sys     unpack_q
        sys     unpack_p
        sub     c
        jr      c,5f
        push    bc
        ld      b,a                     ; as many steps and one more
        inc     b
        exx
        set     7,b
        set     7,c
        exx
        ld      c,0                     ; C P = what is left
2:      or      a
        subtract_q
        jr      nc,3f
        bit     0,c
        jr      nz,3f
        add_q
3:      dec     b
        jr      z,4f
        add     hl,hl
        exx
        adc     hl,hl
        rl      b
        exx
        ld      a,0
        rla
        ld      c,a
        jr      2b
4:      pop     bc
        ld      d,c
        ld      c,0
        ld      e,c
        sys     fp_norm
5:      pop     af
        ld      b,a
        ld      a,(FACC)
        or      a
        ret     z
        ld      hl,FTEMP + 1
        ld      a,(hl)
        and     0x80
        ld      c,a
        ld      de,FACC + 1
        xor     b
        ld      a,(de)
        jp      m,6f
        or      c
        ld      (de),a
        jr      7f
6:      xor     c                       ; other signs: FACC less it
        xor     0x80
        ld      (de),a
        dec     hl
        push    hl
        sys     fp_add
        pop     hl
        sys     fp_cmp
        jr      nz,7f
        ld      hl,FACC + 5             ; one less of the 40 bits
        ld      b,4
8:      ld      a,(hl)
        dec     (hl)
        or      a
        jr      nz,7f
        dec     hl
        djnz    8b
        ld      a,(hl)
        dec     (hl)
        and     0x7F
        jr      nz,7f
        ld      a,(hl)
        xor     0x80                    ; it was a power of two
        ld      (hl),a
        dec     hl
        dec     (hl)
7:      sys     fp_tidy
        ret
