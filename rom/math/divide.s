; Division, and the return to small integers.
        .include "math/math.inc"
        .globl  fp_div, fp_tidy, int_quotient, negate
        .text

; The divisor Q is taken from the rest P, whose top byte is A; CF = 1 when it was too large: put_back.
        .macro  try_divisor
        exx
        or      a
        sbc     hl,de
        exx
        sbc     hl,de
        sbc     a,c
        exx
        .endm
        .macro  put_back
        add     hl,de
        exx
        adc     hl,de
        adc     a,c
        exx
        .endm

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
        try_divisor
        jr      nc,3f
        put_back
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
        try_divisor
        jr      c,6f
        scf
        rl      b
        jp      nc,5b
        jr      9f
6:      put_back
        sla     b
        jp      nc,5b
        jr      9f
7:      try_divisor
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
        any_bits
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
        jr      c,div_up
        sbc     hl,de
        exx
        sbc     hl,de
        sbc     a,c
        exx
        jr      c,div_pack
div_up: ld      hl,FACC + 5
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

; FACC = HL / BC, both small integers; BC is not 0, and FACC a small integer. In 16 bits, as long as there is a rest.
int_quotient:
        ld      a,h
        xor     b
        ld      (FSIGN),a
        bit     7,b
        jr      z,1f
        negate_word b,c
1:      bit     7,h
        call    nz,negate
        ex      de,hl                   ; DE = dividend, then the quotient, HL = rest
        ld      hl,0
        ld      a,16
        inc     d
        dec     d
        jr      nz,2f
        ld      d,e
        ld      e,l
        ld      a,8
2:      sla     e                       ; zeros in front
        rl      d
        jr      c,4f
        dec     a
        jr      nz,2b
        jr      6f                      ; 0 / BC
3:      sla     e
        rl      d
4:      adc     hl,hl
        sbc     hl,bc
        jr      nc,5f
        add     hl,bc
        dec     a
        jr      nz,3b
        jr      6f
5:      inc     e
        dec     a
        jr      nz,3b
6:      ld      a,h
        or      l
        jr      nz,7f
        ex      de,hl                   ; no rest
        ld      a,(FSIGN)
        rla
        jr      nc,1f
        call    negate
        jr      2f
1:      bit     7,h
        jp      nz,fp_fromuint          ; 32768
2:      ld      (FACC + 1),hl
        ret

7:      ld      a,144                   ; a float: bits behind the point until the top bit is 1
        jr      9f
8:      dec     a
        add     hl,hl
        sbc     hl,bc
        jr      nc,1f
        add     hl,bc
1:      ccf
        rl      e
        rl      d
9:      bit     7,d
        jr      z,8b
        ld      (FEXP),a
        ld      a,d
        ld      d,e
        ld      e,a
        ld      (FACC + 1),de
        ld      de,FACC + 3             ; then three bytes more
1:      ld      a,h
        or      l
        jr      z,4f
        ld      a,1
2:      add     hl,hl
        sbc     hl,bc
        jr      nc,3f
        add     hl,bc
3:      ccf
        rla
        jr      nc,2b
4:      ld      (de),a
        inc     e
        ld      a,e
        cp      FACC_ENDLOW
        jr      nz,1b
        add     hl,hl
        sbc     hl,bc
        jp      nc,div_up
        jp      div_pack

; HL = -HL. Changes AF.
negate: negate_word h,l
        ret
