; The functions' entries in the system ROM, and the polynomial.
        .include "math/math.inc"
        .globl  fp_pi, fp_sqr, fp_exp, fp_log, fp_sin, fp_cos, fp_tan, fp_atn, fp_rnd, fp_pow, fp_poly
        .text

; FACC = function of FACC. What a function can't take is E_QUANTITY.
fp_pi:  ext     x_pi
        ret
fp_sqr: ext     x_sqr
        ret
fp_exp: ext     x_exp
        ret
fp_log: ext     x_log
        ret
fp_sin: ext     x_sin
        ret
fp_cos: ext     x_cos
        ret
fp_tan: ext     x_tan
        ret
fp_atn: ext     x_atn
        ret

; FACC = a random number, above 0 and below 1.
fp_rnd: ext     x_rnd
        ret

; FACC = number at HL ^ FACC.
fp_pow: ld      de,FT3
        ld      bc,6
        ldir
        ext     x_pow
        ret

; FACC = polynomial in FACC. HL -> its degree, then the coefficients from the highest power on.
fp_poly:
        push    hl
        ld      hl,FT0
        call    fp_store
        pop     hl
        ld      b,(hl)
        inc     hl
        call    fp_load
1:      push    bc
        push    hl
        ld      hl,FT0
        call    fp_mul
        pop     hl
        push    hl
        call    fp_add
        pop     hl
        ld      bc,6
        add     hl,bc
        pop     bc
        djnz    1b
        ret
