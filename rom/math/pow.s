; Powers.
        .include "math/math.inc"
        .include "math/calculate.inc"
        .globl  fp_pow
        .text

; FACC = number at HL ^ FACC. 0^0 = 1; 0 to a negative power is E_DIVISION; a negative number to a power that is not whole
; E_QUANTITY. Whole powers of small integers below 128, and of others up to 16, are multiplied out, so that what
; fits the mantissa is exact.
fp_pow: ld      de,FT3
        ld      bc,6
        ldir
        call    fp_sign
        jr      nz,1f
        call    calculate
        .byte   LOAD + ONE, 0
        ret
1:      push    af
        ld      hl,(FT3 + 1)
        ld      a,(FT3)
        or      h
        or      l
        jr      nz,2f
        pop     af
        jp      m,9f
        call    fp_zero
        ret
9:      raise   E_DIVISION

2:      call    fp_tidy
        call    calculate
        .byte   STORE + X5, 0
        ld      a,(FACC)
        or      a
        jp      nz,any_power
        ld      hl,(FACC + 1)
        bit     7,h
        jr      z,3f
        sub     l
        ld      l,a
        sbc     a,a
        sub     h
        ld      h,a
3:      ld      a,h
        or      a
        jr      nz,any_power
        ld      a,(FT3)
        or      a
        ld      a,l
        jr      nz,4f
        add     a,a
        jr      c,any_power             ; 128 or more
        ld      a,l
        jr      5f
4:      cp      17
        jr      nc,any_power

; X3 ^ A, A = 1 to 127; the sign of the power is on the stack.
5:      ld      c,a
        push    bc
        call    calculate
        .byte   LOAD + X3, 0
        call    make_float
        pop     bc
        pop     hl
        bit     7,h
        push    hl
        jr      z,7f
        sub     128                     ; the reciprocal: of the power, or of X3 if the power could be out of range
        jr      z,6f
        jr      nc,8f
        neg
6:      inc     a
8:      ld      b,a
        xor     a
10:     add     a,c
        jr      c,11f
        djnz    10b
        cp      126
        jr      c,7f
11:     push    bc
        call    calculate
        .byte   DIV + ONE, STORE + X3, 0
        pop     bc
        pop     hl
        ld      hl,0                    ; as if the power were positive
        push    hl
7:      push    bc
        call    calculate
        .byte   LOAD + X3, 0
        pop     bc
        ld      b,8
1:      dec     b
        sla     c
        jr      nc,1b
        inc     b
        jr      4f
2:      push    bc
        call    calculate
        .byte   STORE + X2, MUL + X2, 0
        pop     bc
        sla     c
        jr      nc,4f
        push    bc
        call    calculate
        .byte   MUL + X3, 0
        pop     bc
4:      djnz    2b
        pop     af
        ret     p
        call    calculate
        .byte   DIV + ONE, 0
        ret

; The sign of the power is not needed any more. A negative number first.
any_power:
        pop     af
        call    calculate
        .byte   LOAD + X3, 0
        call    fp_sign
        cp      1
        jr      z,2f
        call    calculate
        .byte   LOAD + X5, 0
        call    fp_int
        ld      hl,DIGITS
        call    fp_cmp
        jr      z,1f
        raise   E_QUANTITY
1:      call    calculate
        .byte   LOAD + X5, MUL + HALF, STORE + X1, 0
        call    fp_int
        ld      hl,FT1
        call    fp_cmp
        push    af                      ; NZ: an odd power
        call    calculate
        .byte   LOAD + X3, 0
        call    fp_abs
        jr      3f
2:      xor     a
        push    af

3:      ld      hl,DIGITS
        ld      a,(hl)
        cp      185
        jr      c,4f
        ld      (hl),184                ; as good as any larger power, and n times it is in range

; ln X3 = n ln 2 + H + L with a short H, the first 16 bits of 2s; what s has beyond them comes from the rest of
; its division.
4:      call    log_parts
        push    bc
        call    calculate
        .byte   STORE + X3, LOAD + X0, 0
        call    shorten
        .byte   STORE + X0, SUB + X2, STORE + X2, LOAD + X1, 0
        call    shorten
        .byte   STORE + X4, MUL + X0, SUB + X2, STORE + X2
        .byte   LOAD + X4, SUB + X1, MUL + X0, SUB + X2, STORE + X2
        .byte   LOAD + X1, ADD + ONE, DIV + X2, STORE + X2, ADD + X2, ADD + X3, STORE + X3
        .byte   LOAD + X0, ADD + X0, STORE + X0, 0
        pop     bc
        call    from_byte

; y = Y + y' with a short Y. Y * H and Y * n lose nothing; the latter is a whole number, which goes straight into
; the exponent, and a fraction. X0 = Y * H, X3 = all else.
        call    calculate
        .byte   STORE + X1, LOAD + X5, MUL + X3, STORE + X3, LOAD + X5, 0
        call    shorten
        .byte   STORE + X2, SUB + X5, STORE + X5, MUL + X0, ADD + X3, STORE + X3
        .byte   LOAD + X2, MUL + X0, STORE + X0
        .byte   LOAD + X2, MUL + X1, STORE + X2, ADD + HALF, 0
        call    fp_int
        call    fp_toint
        jr      c,5f
        ld      de,1000
        ex      de,hl
        add     hl,de
        ld      a,h
        cp      8
        jr      nc,5f
        push    de
        call    calculate
        .byte   SUB + X2, STORE + X2, LOAD + X5, MUL + X1, ADD + X2, MUL + LN2, ADD + X3, STORE + X3
        .byte   LOAD + X0, STORE + X1, ADD + X3, 0
        pop     hl
        call    exp_scaled
        pop     af
        ret     z
        call    fp_neg
        ret
5:      pop     af
        jp      exp_beyond
