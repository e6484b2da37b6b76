; Moving and converting numbers, sign, comparison.
        .include "math/math.inc"
        .globl  fp_load, fp_store, fp_zero, fp_fromint, fp_fromuint, fp_fromlong, long_norm
        .globl  fp_float, int_norm, fp_sign, fp_neg, fp_abs, fp_sgn, fp_cmp
        .text

; FACC = number at HL. HL is left behind it; all else stays.
fp_load:
        push    bc
        push    de
        ld      de,FACC
        ld      bc,6
        ldir
        pop     de
        pop     bc
        ret

; Number at HL = FACC. HL is left behind it; all else stays.
fp_store:
        push    bc
        push    de
        ex      de,hl
        ld      hl,FACC
        ld      bc,6
        ldir
        ex      de,hl
        pop     de
        pop     bc
        ret

; FACC = unsigned HL.
fp_fromuint:
        ld      de,0

; FACC = unsigned DE:HL.
fp_fromlong:
        ld      a,d
        or      e
        jr      nz,1f
        bit     7,h
        jr      z,fp_fromint
1:      ld      bc,160 << 8

; FACC = DE:HL x 2^(B-160), with the sign of C's bit 7; always a float, unless it is zero.
long_norm:
        push    bc
        ld      a,d
        exx
        ld      b,a
        exx
        ld      a,e
        exx
        ld      h,a
        exx
        ld      a,h
        exx
        ld      l,a
        exx
        ld      h,l
        xor     a
        ld      l,a
        ld      c,a
        pop     de
        jp      fp_norm

; FACC = 0. Changes A, HL.
fp_zero:
        ld      hl,0

; FACC = signed HL. Changes A only.
fp_fromint:
        ld      (FACC + 1),hl
        xor     a
        ld      (FACC),a
        ld      (FACC + 3),a
        ld      (FACC + 4),a
        ld      (FACC + 5),a
        ret

; FACC, a small integer, becomes a float; Z when it is zero, which stays as it is. Changes A, DE.
fp_float:
        ld      de,(FACC + 1)
        call    int_norm
        ret     z
        ld      (FACC),a
        ld      a,d
        ld      (FACC + 1),a
        ld      a,e
        ld      (FACC + 2),a
        or      1
        ret

; Signed DE becomes the first two bytes of a float's mantissa with its sign, in D and E, A = the exponent; Z and
; A = 0 for zero. Keeps the rest.
int_norm:
        ld      a,d
        or      e
        ret     z
        push    hl
        push    bc
        ex      de,hl
        ld      c,h
        bit     7,h
        call    nz,negate
        ld      a,145
        inc     h
        dec     h
        jr      nz,2f
        ld      h,l
        ld      l,0
        ld      a,137
2:      dec     a
        add     hl,hl
        jr      nc,2b                   ; until the top bit, which is not kept, is out
        rl      c
        rr      h
        rr      l
        ex      de,hl
        pop     bc
        pop     hl
        or      a
        ret

; A = 0, 1 or 255 by FACC's sign, Z and S likewise. Changes AF only.
fp_sign:
        ld      a,(FACC)
        or      a
        ld      a,(FACC + 1)
        jr      nz,1f
        push    hl
        ld      hl,(FACC + 1)
        ld      a,h
        or      l
        ld      a,h
        pop     hl
        jr      nz,1f
        xor     a
        ret
1:      rla
        sbc     a,a
        ret     c
        inc     a
        ret

; FACC = its absolute value. Changes AF, DE, HL.
fp_abs:
        call    fp_sign
        ret     p

; FACC = -FACC. Changes AF, DE, HL.
fp_neg:
        ld      a,(FACC)
        or      a
        jr      z,1f
float_neg:
        ld      a,(FACC + 1)
        xor     0x80
        ld      (FACC + 1),a
        ret
1:      ld      de,(FACC + 1)
        ld      h,a
        ld      l,a
        sbc     hl,de
        ld      (FACC + 1),hl
        ret     po
        call    fp_float                ; -32768
        jr      float_neg

; FACC = -1, 0 or 1 by its sign. Changes AF, HL.
fp_sgn:
        call    fp_sign
        ld      l,a
        rla
        sbc     a,a
        ld      h,a
        jp      fp_fromint

; Compares the number at HL with FACC: Z equal, else NZ; CF = 1 when the number at HL is less. FACC keeps its
; value, but may become a float. Changes AF, BC, DE, HL.
fp_cmp:
        two_integers 1f
        ex      de,hl
        sbc     hl,de
        ld      a,h
        jp      po,9f
        cpl
9:      rla                             ; Z is still that of the difference
        ret

1:      ld      a,(hl)
        or      a
        jr      nz,2f
        inc     hl                      ; the number is a small integer: make it a float in OPND
        ld      e,(hl)
        inc     hl
        ld      d,(hl)
        call    int_norm
        ld      hl,OPND
        ld      (hl),a
        inc     hl
        ld      (hl),d
        inc     hl
        ld      (hl),e
        inc     hl
        three_zeros
        ld      hl,OPND
2:      ld      a,(FACC)
        or      a
        call    z,fp_float
        ld      de,FACC + 1
        ld      a,(de)
        inc     hl
        xor     (hl)
        jp      m,5f
        dec     de                      ; same sign: compare as bytes
        dec     hl
        ld      b,6
3:      ld      a,(de)
        cp      (hl)
        jr      nz,4f
        inc     de
        inc     hl
        djnz    3b
        ret
4:      rra                             ; bit 7 = number at HL is further from zero
        ld      hl,FACC + 1
        xor     (hl)
        cpl
        jr      6f
5:      ld      a,(hl)                  ; different signs
6:      or      1
        rla
        ret
