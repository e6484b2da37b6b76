; Entries of functions that stand in the extension ROM, and the polynomial.
        .include "math/math.inc"
        .globl  fp_rnd, fp_mod, fp_poly
        .text

; FACC = a random number, above 0 and below 1.
fp_rnd: ext     x_rnd
        ret

; FACC = number at HL MOD FACC.
fp_mod: ext     x_mod
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
        ld      a,(FACC)                ; a small term needs less digits
        cp      121
        jr      nc,2f
        cp      113
        ld      a,0
        ld      (FACC + 5),a
        jr      nc,2f
        ld      (FACC + 4),a
2:      ld      hl,FT0
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
