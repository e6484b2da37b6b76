; Division, and the return to small integers.
        .include "math/math.inc"
        .globl  fp_div, fp_tidy
        .text

; FACC = number at HL / FACC. An integer quotient of two small integers is a small integer.
fp_div:
        ld      a,(FACC)
        or      a
        jr      nz,float_div
        call    fp_float
        jr      nz,1f
        raise   E_DIVISION
1:      ld      a,(hl)
        or      a
        jr      nz,float_div
        call    float_div

; FACC becomes a small integer when it is one in value. Changes AF, BC, HL.
fp_tidy:
        ld      a,(FACC)
        cp      144
        ret     nc
        call    floor_word
        dec     c
        ret     z                       ; there is a fraction
        jp      fp_fromint

float_div:
        call    unpack_q
        jp      z,fp_zero
        call    unpack_p
        ld      a,c
        sub     b
        jr      c,1f
        add     a,128
        jp      c,fp_overflow
        jr      2f
1:      sub     128
        jp      c,fp_zero
2:      ld      (FEXP),a

; P = dividend, later what is left of it, A its top byte; Q = divisor.
        ex      de,hl
        exx
        ex      de,hl
        ld      a,b
        xor     c
        ld      (FSIGN),a
        ld      a,c
        or      0x80
        set     7,b
        ld      c,b
        exx
        or      a
        sbc     hl,de
        exx
        sbc     hl,de
        sbc     a,c
        exx
        jr      nc,3f
        add     hl,de
        exx
        adc     hl,de
        adc     a,c
        exx
        ld      bc,FACC + 1
        push    bc
        ld      b,1                     ; B: bits of the quotient, the 1 before them ends the byte
        jr      5f
3:      ld      bc,FACC + 1
        push    bc
        ld      b,a                     ; quotient from 1 to below 2
        ld      a,(FEXP)
        inc     a
        jp      z,fp_overflow
        ld      (FEXP),a
        ld      a,b
        ld      b,3

5:      add     hl,hl                   ; next bit of the quotient
        exx
        adc     hl,hl
        adc     a,a
        jr      c,7f
        cp      c
        jr      c,8f
        exx
        or      a
        sbc     hl,de
        exx
        sbc     hl,de
        sbc     a,c
        exx
        jr      c,6f
        scf
        rl      b
        jp      nc,5b
        jr      9f
6:      add     hl,de
        exx
        adc     hl,de
        adc     a,c
        exx
        sla     b
        jp      nc,5b
        jr      9f
7:      exx
        or      a
        sbc     hl,de
        exx
        sbc     hl,de
        sbc     a,c
        exx
        scf
        rl      b
        jp      nc,5b
        jr      9f
8:      exx
        sla     b
        jp      nc,5b

9:      ex      (sp),hl                 ; a byte is ready
        ld      (hl),b
        inc     hl
        ld      c,a
        ld      a,l
        cp      FACC_ENDLOW
        jr      z,div_round
        ex      (sp),hl
        exx
        ld      a,h
        or      l
        exx
        or      h
        or      l
        or      c
        ld      a,c
        ld      b,1
        jr      nz,5b
        pop     hl                      ; nothing left: the rest of the quotient is 0
1:      ld      (hl),0
        inc     hl
        ld      a,l
        cp      FACC_ENDLOW
        jr      nz,1b
        jr      div_pack

div_round:
        pop     hl
        ld      a,c
        add     hl,hl
        exx
        adc     hl,hl
        adc     a,a
        exx
        jr      c,2f
        sbc     hl,de
        exx
        sbc     hl,de
        sbc     a,c
        exx
        jr      c,div_pack
2:      ld      hl,FACC + 5
        ld      b,5
3:      inc     (hl)
        jr      nz,div_pack
        dec     hl
        djnz    3b
        inc     hl                      ; all ones: 1
        ld      (hl),0x80
        ld      hl,FEXP
        inc     (hl)
        jp      z,fp_overflow

div_pack:
        ld      a,(FEXP)
        or      a
        jp      z,fp_zero
        ld      hl,FACC
        ld      (hl),a
        inc     hl
        ld      a,(FSIGN)
        or      0x7F
        and     (hl)
        ld      (hl),a
        ret
