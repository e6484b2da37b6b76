; Multiplication.
        .include "math/math.inc"
        .globl  fp_mul, mul_8
        .text

; The sum, top byte A, shifted right by a bit.
        .macro  half_sum
        rra
        rr      h
        rr      l
        exx
        rr      h
        rr      l
        .endm

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
        ld      a,d                     ; a factor of at most 24 bits belongs into FACC: then nothing is lost
        or      e
        jr      nz,5f
        ld      hl,(FACC + 4)
        ld      a,h
        or      l
        jr      z,5f
        ld      d,l
        ld      e,h
        ld      hl,0
        ld      (FACC + 4),hl
        exx
        ld      hl,FACC + 1
        ld      a,(hl)
        ld      (hl),c
        ld      c,a
        inc     hl
        ld      a,(hl)
        ld      (hl),d
        ld      d,a
        inc     hl
        ld      a,(hl)
        ld      (hl),e
        ld      e,a
        exx
5:      ld      hl,FACC + 1
        ld      a,(hl)
        set     7,(hl)
        exx
        xor     c
        set     7,c
        exx
        ld      c,a
        push    bc

; Byte by byte of FACC's mantissa, lowest first, Q is added to a sum that moves right. If there are more than three,
; what the lowest bring is so small that 24 bits of Q and of the sum are enough for them.
        ld      a,(FACC + 4)
        ld      b,a
        ld      hl,(FACC + 5)
        ld      h,0
        or      l
        jr      z,7f
        ld      a,l
        ld      l,h
        exx
        ld      hl,0
        ld      b,a
        xor     a
        call    mul_24
        exx
        ld      c,a
        ld      a,b
        exx
        ld      b,a
        exx
        ld      a,c
        exx
        call    mul_24
        jr      8f
7:      exx
        ld      h,a
        ld      l,a
8:      ld      b,a
        exx
        ld      a,(FACC + 3)
        ld      c,a
        call    mul_40
        ld      a,(FACC + 2)
        ld      b,c
        ld      c,a
        ld      a,b
        ld      (FACC + 2),a            ; what is lost
        call    mul_40
        ld      a,c
        ld      (FACC + 3),a
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
        jr      nz,6f
        jp      fp_zero
4:      inc     d
        jp      z,fp_overflow
6:      ld      a,c
        cp      0x80
        jp      nz,fp_round
        push    hl                      ; half-way, if nothing was lost
        ld      hl,(FACC + 2)
        ld      a,h
        or      l
        ld      hl,(FACC + 4)
        or      h
        or      l
        pop     hl
        jp      z,fp_round
        inc     c
        jp      fp_round

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
        half_sum
        djnz    1b
2:      rr      c
        exx
        ld      b,a
        exx
        ret
3:      exx
        half_sum
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
        call    nz,negate
        bit     7,d
        jr      z,2f
        negate_word d,e
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
        call    m,negate
        ld      (FACC + 1),hl
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
        cp      16
        jr      nc,1f
        add     a,a
        add     a,a
        add     a,a
        add     a,a
        ld      b,4
1:      add     hl,hl
        rla
        jr      nc,2f
        add     hl,de
        adc     a,0
2:      djnz    1b
        ret
