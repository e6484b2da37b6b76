; Exponential, logarithm, angles, square root. In the extension ROM; the arithmetic is in the system ROM.
; All change AF, BC, DE, HL and their alternates.
        .include "math/math.inc"
        .include "math/calculate.inc"
        .globl  x_pi, x_sqr, x_exp, x_log, x_sin, x_cos, x_tan, x_atn
        .globl  calculate, exp_scaled, exp_beyond, log_parts, make_float, from_byte, shorten
        .section .ext,"x"

; FACC = pi.
x_pi:   call    calculate
        .byte   LOAD + PIHALF, 0
        ld      hl,FACC
        inc     (hl)
        ret

; FACC = square root: three steps of Newton from a straight line through the top byte. Exact for squares.
x_sqr:  sys     fp_sign
        ret     z
        jp      m,bad_argument
        call    make_float
        call    calculate
        .byte   STORE + X1, 0
        ld      hl,FACC + 1
        ld      a,(hl)
        or      0x80
        dec     hl
        bit     0,(hl)
        jr      z,1f
        srl     a                       ; mantissa from 64 to 255, of which the root is taken
1:      rrca
        and     0x7F
        ld      c,a
        rrca
        rrca
        and     0x1F
        ld      b,a
        rrca
        and     0x0F
        add     a,b
        add     a,c
        add     a,89                    ; 89 + 11/16 of it, at most 255: within 4 %
        jr      nc,3f
        ld      a,255
3:
        and     0x7F
        inc     hl
        ld      (hl),a
        dec     hl
        ld      a,(hl)
        add     a,129
        rra
        ld      (hl),a
        call    calculate
        .byte   STORE + X2, 0
        ld      b,3
2:      push    bc
        call    calculate
        .byte   DIV + X1, ADD + X2, 0
        ld      hl,FACC
        dec     (hl)
        call    calculate
        .byte   STORE + X2, 0
        pop     bc
        djnz    2b
        sys     fp_tidy
        ret

; FACC = e ^ FACC.
x_exp:  call    calculate
        .byte   STORE + X1, SUB + X1, STORE + X3, LOAD + X1, 0
        ld      hl,0

; FACC = e ^ (X1 + X3) * 2^HL; FACC = X1 + X3 already, but rounded; HL = -1000 to 1000.
exp_scaled:
        push    hl
        call    make_float
        cp      140
        jr      nc,1f                   ; 2048 or more
        call    calculate               ; n = nearest whole number of ln 2 in it
        .byte   MUL + LOG2E, ADD + HALF, 0
        sys     fp_int
        sys     fp_toint
        pop     de
        add     hl,de
        push    hl
        call    calculate               ; r = the rest; e^r = 1 + 2r / (P(r*r) - r)
        .byte   STORE + X2, MUL + LN2A, SUB + X1, STORE + X1
        .byte   LOAD + X2, MUL + LN2B, SUB + X1, ADD + X3, STORE + X1
        .byte   MUL + X1, POLY + P_EXP, SUB + X1, DIV + X1, MUL + TWO, SUB + ONE, 0
        call    make_float
        ld      e,a
        ld      d,0
        pop     hl
        add     hl,de                   ; exponent of the result
        ld      a,h
        or      a
        jp      m,2f
        jr      nz,3f
        ld      a,l
        or      a
        jr      z,2f
        ld      (FACC),a
        sys     fp_tidy
        ret
1:      pop     hl

; The result for an exponent FACC that is far too large or too small.
exp_beyond:
        sys     fp_sign
        jp      p,3f
2:      sys     fp_zero
        ret
3:      raise   E_OVERFLOW
bad_argument:
        raise   E_QUANTITY

; FACC = natural logarithm.
x_log:  sys     fp_sign
        jr      z,bad_argument
        jp      m,bad_argument
        call    log_parts
        push    bc
        call    calculate
        .byte   ADD + X0, ADD + X0, STORE + X1, 0
        pop     bc
        call    from_byte
        call    calculate
        .byte   MUL + LN2, ADD + X1, 0
        ret

; FACC > 0 as m * 2^C, m around 1. With s = (m - 1) / (m + 1) the logarithm of m is 2s + s*s*s * P(s*s).
; FACC = that without 2s, X0 = s, X1 = m, X2 = m - 1.
log_parts:
        call    make_float
        sub     128
        ld      c,a
        ld      hl,FACC
        ld      (hl),128
        inc     hl
        ld      a,(hl)
        cp      0x35                    ; root of one half
        jr      nc,1f
        dec     hl
        inc     (hl)
        dec     c
1:      push    bc
        call    calculate
        .byte   STORE + X1, LOAD + ONE, SUB + X1, STORE + X2, LOAD + X1, ADD + ONE, DIV + X2
        .byte   STORE + X0, MUL + X0, POLY + P_LOG, MUL + X4, MUL + X0, 0
        pop     bc
        ret

; FACC = signed C.
from_byte:
        ld      a,c
        ld      l,a
        rla
        sbc     a,a
        ld      h,a
        sys     fp_fromint
        ret

; FACC, if a small integer other than 0, becomes a float. A = its exponent.
make_float:
        ld      a,(FACC)
        or      a
        ret     nz
        sys     fp_float
        ld      a,(FACC)
        ret

; FACC = sine: with n = nearest number of half turns and r = x - n * pi it is that of r, negative for odd n.
x_sin:  call    angle
        .byte   STORE + X1, MUL + PIINV, ADD + HALF, 0
        sys     fp_int
        call    calculate
        .byte   STORE + X2, ADD + X2, 0
        jr      sine

; FACC = cosine: as sine, a quarter turn later.
x_cos:  call    angle
        .byte   STORE + X1, MUL + PIINV, 0
        sys     fp_int
        call    calculate
        .byte   ADD + ONE, STORE + X2, ADD + X2, STORE + X0, LOAD + ONE, SUB + X0, 0

; X1 = x, FACC = quarter turns to be taken off, X2 = half turns. pi / 2 comes in three parts of which the first
; two have 24 bits: their products are exact.
sine:   call    calculate
        .byte   STORE + X0, MUL + PIHALFA, SUB + X1, STORE + X1
        .byte   LOAD + X0, MUL + PIHALFB, SUB + X1, STORE + X1
        .byte   LOAD + X0, MUL + PIHALFC, SUB + X1, STORE + X1
        .byte   MUL + X1, POLY + P_SIN, MUL + X1, 0
        ld      a,(FACC)
        cp      129
        call    nc,cut                  ; never above 1
        call    calculate
        .byte   STORE + X1, LOAD + X2, MUL + HALF, STORE + X2, 0
        sys     fp_int
        ld      hl,FT2
        sys     fp_cmp
        push    af
        call    calculate
        .byte   LOAD + X1, 0
        pop     af
        ret     z
        sys     fp_neg
        ret

; An angle of 2^30 or more has no meaning any more. Goes on as calculate.
angle:  ld      a,(FACC)
        cp      159
        jp      nc,bad_argument
        jr      calculate

; FACC = tangent.
x_tan:  call    calculate
        .byte   STORE + X3, 0
        call    x_sin
        call    calculate
        .byte   STORE + X5, LOAD + X3, 0
        call    x_cos
        call    calculate
        .byte   DIV + X5, 0
        ret

; FACC = arc tangent: from 1 on by the reciprocal, from 1/4 on a twelfth of a turn less.
x_atn:  sys     fp_sign
        ret     z
        push    af
        sys     fp_abs
        call    make_float
        cp      129
        push    af                      ; CF = 0: reciprocal
        jr      c,1f
        call    calculate
        .byte   DIV + ONE, 0
1:      ld      a,(FACC)
        cp      127
        push    af                      ; CF = 0: turned
        jr      c,2f
        call    calculate
        .byte   STORE + X1, MUL + ROOT3, STORE + X2, LOAD + ONE, SUB + X2, STORE + X2
        .byte   LOAD + X1, ADD + ROOT3, DIV + X2, 0
2:      call    calculate
        .byte   STORE + X1, MUL + X1, POLY + P_ATN, MUL + X1, 0
        pop     af
        jr      c,3f
        call    calculate
        .byte   ADD + PI6, 0
3:      pop     af
        jr      c,4f
        call    calculate
        .byte   SUB + PIHALF, 0
4:      pop     af
        ret     p
        sys     fp_neg
        ret

; FACC cut to 16 bits. Changes A.
cut:    xor     a
        ld      (FACC + 3),a
        ld      (FACC + 4),a
        ld      (FACC + 5),a
        ret

; The same, then goes on as calculate.
shorten:
        call    cut

; Carries out the steps that stand as bytes behind the CALL, up to a 0. A step is an operation plus a value: X0
; to X5, or a constant.
calculate:
        pop     hl
1:      ld      a,(hl)
        inc     hl
        push    hl
        or      a
        ret     z
        call    step
        pop     hl
        jr      1b

step:   ld      c,a
        and     31
        ld      l,a
        ld      h,0
        ld      d,h
        ld      e,l
        add     hl,hl
        add     hl,de
        add     hl,hl
        ld      de,FTEMP
        cp      VALUES
        ld      a,c
        jr      c,1f
        cp      POLY
        jr      nc,polynomial
        ld      de,constants - 6 * VALUES
        add     hl,de
        ld      de,OPND                 ; the system ROM doesn't see this one
        push    de
        ld      bc,6
        ldir
        pop     hl
        jr      2f
1:      add     hl,de
2:      and     0xE0
        cp      ADD
        jr      c,3f
        jr      z,4f
        cp      MUL
        jr      c,5f
        jr      z,6f
        sys     fp_div
        ret
3:      cp      STORE
        jr      z,7f
        sys     fp_load
        ret
4:      sys     fp_add
        ret
5:      sys     fp_sub
        ret
6:      sys     fp_mul
        ret
7:      sys     fp_store
        ret

polynomial:
        ld      de,polynomials - 6 * VALUES
        add     hl,de
        ld      c,(hl)
        inc     hl
        ld      h,(hl)
        ld      l,c
        ld      de,FPOLY
        ld      bc,43
        push    de
        ldir
        pop     hl
        sys     fp_poly
        ret
