; Multiplication.
        .include "math/math.inc"
        .globl  fp_mul, mul_8
        .text

; FACC = number at HL * FACC.
fp_mul:
        ld      a,(FACC)
        or      (hl)
        jp      z,int_mul
        ld      a,(FACC)
        or      a
        jr      nz,1f
        call    fp_float
        ret     z
1:      call    unpack_q
        jp      z,fp_zero

; B = exponent of the product, should its top bit be 0; C = its sign.
        ld      a,(FACC)
        add     a,c
        jr      c,2f
        sub     129
        jp      c,fp_zero
        jr      3f
2:      add     a,127
        jp      c,fp_overflow
3:      ld      b,a
        ld      hl,FACC + 1
        ld      a,(hl)
        set     7,(hl)
        exx
        xor     c
        set     7,c
        exx
        ld      c,a
        push    bc

; Byte by byte of FACC's mantissa, lowest first, Q is added to a sum that moves right. What the two lowest bytes
; bring is so small that 24 bits of Q and of the sum are enough for them.
        exx
        ld      hl,0
        ld      a,(FACC + 5)
        ld      b,a
        xor     a
        call    mul_24
        exx
        ld      b,a
        ld      a,(FACC + 4)
        exx
        ld      b,a
        exx
        ld      a,b
        ld      hl,0
        exx
        call    mul_24
        ld      b,a
        exx
        ld      a,(FACC + 3)
        ld      c,a
        call    mul_40
        ld      a,(FACC + 2)
        ld      c,a
        call    mul_40
        ld      a,(FACC + 1)
        ld      c,a
        call    mul_40

        pop     de
        exx
        ld      a,b
        exx
        add     a,a
        jr      c,4f
        sla     c                       ; below one half: one place left
        adc     hl,hl
        exx
        adc     hl,hl
        rl      b
        exx
        ld      a,d
        or      a
        jp      nz,fp_round
        jp      fp_zero
4:      inc     d
        jp      nz,fp_round
        jp      fp_overflow

; A H' L' = (A H' L' + B' * C' D' E') / 256, with the alternate registers in use. B' becomes 0.
mul_24:
        inc     b
        dec     b
        jr      z,3f
        scf
        rr      b                       ; the 1 behind the bits ends the loop
1:      jr      nc,2f
        add     hl,de
        adc     a,c
2:      rra
        rr      h
        rr      l
        srl     b
        jp      nz,1b
        ret
3:      ld      l,h
        ld      h,a
        xor     a
        ret

; P = (P + C * Q) / 256, C = the 8 bits shifted out. Changes A, B.
mul_40:
        inc     c
        dec     c
        jr      z,4f
        exx
        ld      a,b
        exx
        ld      b,8
1:      rr      c                       ; next bit of the factor out, last bit of the sum in
        jr      nc,3f
        add     hl,de
        exx
        adc     hl,de
        adc     a,c
        rra
        rr      h
        rr      l
        exx
        rr      h
        rr      l
        djnz    1b
2:      rr      c
        exx
        ld      b,a
        exx
        ret
3:      exx
        rra
        rr      h
        rr      l
        exx
        rr      h
        rr      l
        djnz    1b
        jr      2b
4:      ld      c,l
        ld      l,h
        exx
        ld      a,l
        ld      l,h
        ld      h,b
        ld      b,0
        exx
        ld      h,a
        ret

; Small integers.
int_mul:
        inc     hl
        ld      e,(hl)
        inc     hl
        ld      d,(hl)
        ld      hl,(FACC + 1)
        ld      a,h
        xor     d
        push    af                      ; S = sign of the product
        bit     7,h
        jr      z,1f
        xor     a
        sub     l
        ld      l,a
        sbc     a,a
        sub     h
        ld      h,a
1:      bit     7,d
        jr      z,2f
        xor     a
        sub     e
        ld      e,a
        sbc     a,a
        sub     d
        ld      d,a
2:      ld      a,h                     ; HL is to be the factor of one byte, if there is one
        or      a
        jr      z,3f
        ex      de,hl
3:      ld      c,l
        ld      a,h
        or      a
        jr      nz,5f
        ld      a,c
        call    mul_8
        or      a
        jr      nz,4f
        bit     7,h
        jr      nz,4f
        pop     af
        jp      p,9f
        xor     a
        sub     l
        ld      l,a
        sbc     a,a
        sub     h
        ld      h,a
9:      ld      (FACC + 1),hl
        ret
4:      ld      e,a
        ld      d,0
        jr      6f
5:      call    mul_8                   ; two bytes: the product does not fit a small integer
        push    hl
        push    af
        ld      a,c
        call    mul_8
        pop     de
        ld      e,a
        pop     bc
        ld      a,h                     ; D B C 0 + 0 E H L
        add     a,c
        ld      h,a
        ld      a,e
        adc     a,b
        ld      e,a
        jr      nc,6f
        inc     d
6:      pop     af
        ld      c,a
        ld      b,160
        jp      long_norm

; A:HL = A * DE. Changes F, B.
mul_8:
        ld      hl,0
        ld      b,8
1:      add     hl,hl
        rla
        jr      nc,2f
        add     hl,de
        adc     a,0
2:      djnz    1b
        ret
