; Exponential, logarithm, angles, square root.
; All change AF, BC, DE, HL and their alternates.
        .include "math/math.inc"
        .include "math/calculate.inc"
        .globl  fp_pi, fp_sqr, fp_exp, fp_log, fp_sin, fp_cos, fp_tan, fp_atn
        .globl  calculate, exp_scaled, exp_beyond, log_parts, make_float, from_byte, shorten
        .text

; FACC = pi.
fp_pi:   call    calculate
        .byte   LOAD + PIHALF, 0
        ld      hl,FACC
        inc     (hl)
        ret

; FACC = square root: three steps of Newton from a straight line through the top byte. Exact for squares.
fp_sqr:  call    fp_sign
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
        call    fp_tidy
        ret

; FACC = e ^ FACC.
fp_exp:  call    calculate
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
        call    fp_int
        call    fp_toint
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
        call    fp_tidy
        ret
1:      pop     hl

; The result for an exponent FACC that is far too large or too small.
exp_beyond:
        call    fp_sign
        jp      p,3f
2:      call    fp_zero
        ret
3:      raise   E_OVERFLOW
bad_argument:
        raise   E_QUANTITY

; FACC = natural logarithm.
fp_log:  call    fp_sign
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
        call    fp_fromint
        ret

; FACC, if a small integer other than 0, becomes a float. A = its exponent.
make_float:
        ld      a,(FACC)
        or      a
        ret     nz
        call    fp_float
        ld      a,(FACC)
        ret

; FACC = sine, cosine: with n = nearest number of quarter turns and r = x - n * pi / 2 they are, by n, sine or cosine
; of r, or the negative.
fp_sin: call    quarters
        jr      1f
fp_cos: call    quarters
        inc     a
1:      push    af
        call    quarter
        pop     af
        and     2
        ret     z
        jp      fp_neg

; FACC = tangent.
fp_tan: call    quarters
        push    af
        xor     a
        call    quarter
        call    calculate
        .byte   STORE + X2, 0
        call    calculate
        .byte   LOAD + X1, 0
        ld      a,1
        call    quarter
        pop     af
        rra
        jr      c,1f
        call    calculate
        .byte   DIV + X2, 0
        ret
1:      call    calculate
        .byte   STORE + X3, LOAD + X2, DIV + X3, 0
        jp      fp_neg

; FACC = X1 becomes its sine, or cosine for an odd A; |X1| <= pi / 4.
quarter:
        rra
        jr      c,1f
        call    calculate
        .byte   MUL + X1, POLY + P_SIN, MUL + X1, 0
        ret
1:      call    calculate
        .byte   MUL + X1, POLY + P_COS, 0
        ret

; The angle FACC less n quarter turns: X1, A = n in its low two bits. pi / 2 comes in two or three parts; the products
; of n with all but the last are exact, as far as n fits. An angle of 2^30 or more has no meaning any more.
quarters:
        ld      a,(FACC)
        cp      159
        jp      nc,bad_argument
        call    calculate
        .byte   STORE + X1, 0
        ld      a,(FACC)
        dec     a                       ; an integer has 0 here
        cp      127
        ld      a,0
        ret     c                       ; below one half
        xor     a
        ld      (FACC + 4),a            ; 24 bits suffice
        ld      (FACC + 5),a
        call    calculate
        .byte   MUL + PI4INV, 0
        call    fp_toint                ; eighths of a turn
        jr      c,2f
        ld      a,h
        add     a,0x40
        jp      m,2f
        inc     hl
        sra     h
        rr      l
        ld      a,l                     ; n
        rla
        sbc     a,a
        xor     h
        ld      a,l
        push    af
        call    fp_fromint
        pop     af
        jr      nz,3f
        push    af
        call    calculate
        .byte   STORE + X0, MUL + PIHALFD, SUB + X1, STORE + X1
        .byte   LOAD + X0, MUL + PIHALFE, SUB + X1, STORE + X1, 0
        pop     af
        ret

2:      call    calculate
        .byte   LOAD + X1, MUL + PI4INV, 0
        ld      hl,FACC
        dec     (hl)
        call    calculate
        .byte   ADD + HALF, 0
        call    fp_int
        call    calculate
        .byte   STORE + X0, 0
        ld      hl,FACC                 ; n less the nearest multiple of 4 below
        call    make_float
        dec     (hl)
        dec     (hl)
        call    fp_int
        call    make_float
        ld      hl,FACC
        inc     (hl)
        inc     (hl)
        call    calculate
        .byte   SUB + X0, 0
        call    fp_toint
        ld      a,l
        push    af
        call    calculate
        .byte   LOAD + X0, 0
        pop     af
3:      push    af
        call    calculate
        .byte   STORE + X0, MUL + PIHALFA, SUB + X1, STORE + X1
        .byte   LOAD + X0, MUL + PIHALFB, SUB + X1, STORE + X1
        .byte   LOAD + X0, MUL + PIHALFC, SUB + X1, STORE + X1, 0
        pop     af
        ret

; FACC = arc tangent: from 1 on by the reciprocal, from 1/4 on a twelfth of a turn less.
fp_atn:  call    fp_sign
        ret     z
        push    af
        call    fp_abs
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
        call    fp_neg
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
        add     a,a
        ld      l,a                     ; 6 times the value
        add     a,a
        and     31 * 4
        ld      h,a
        ld      a,l
        and     31 * 2
        add     a,h
        ld      l,a
        ld      h,0
        ld      a,c
        and     31
        ld      de,FTEMP
        cp      VALUES
        jr      c,1f
        ld      de,constants - 6 * VALUES
1:      add     hl,de
        ld      a,c
        cp      ADD
        jr      c,3f
        cp      SUB
        jp      c,fp_add
        cp      MUL
        jp      c,fp_sub
        cp      DIV
        jp      c,fp_mul
        cp      POLY
        jp      c,fp_div
        ld      de,6 * (LASTVALUE - VALUES)      ; the polynomials stand behind the constants
        add     hl,de
        ld      c,(hl)
        inc     hl
        ld      h,(hl)
        ld      l,c
        jp      fp_poly
3:      cp      STORE
        jp      nc,fp_store
        jp      fp_load
