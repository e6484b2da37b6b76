; Addition and subtraction, and what all arithmetic uses: unpacking, normalising, rounding, packing.
        .include "math/math.inc"
        .globl  fp_add, fp_sub, fp_norm, fp_round, unpack_p, unpack_q, shift_q, fp_overflow
        .text

; FACC = number at HL - FACC.
fp_sub:
        two_integers 1f
        ex      de,hl
        sbc     hl,de                   ; CF is 0 from the OR
        jp      pe,int_overflow
        ld      (FACC + 1),hl
        ret
1:      push    hl
        call    fp_neg
        pop     hl
        jr      float_add

; FACC = number at HL + FACC.
fp_add:
        two_integers float_add
        adc     hl,de
        jp      pe,int_overflow
        ld      (FACC + 1),hl
        ret

; The true result is HL with its sign turned: 32768 to 65534, or -65536 to -32769.
int_overflow:
        bit     7,h
        jp      nz,fp_fromuint
        ex      de,hl
        or      a
        sbc     hl,hl
        sbc     hl,de
        ld      de,0
        jr      c,1f
        inc     e                       ; HL was 0: 65536
1:      ld      bc,160 << 8 | 0x80
        jp      long_norm

float_add:
        ld      a,(FACC)
        or      a
        jr      nz,1f
        call    fp_float
        jp      z,fp_load               ; 0 + x
1:      call    unpack_q
        ret     z                       ; x + 0
        call    unpack_p
        sub     c                       ; A = distance of the exponents
        jr      nc,2f
        neg
        ld      b,c                     ; the larger one into P
        ld      c,a
        ex      de,hl
        exx
        ex      de,hl
        ld      a,b
        ld      b,c
        ld      c,a
        exx
        ld      a,c
2:      push    bc                      ; B = exponent of the sum
        ld      b,a
        exx
        ld      a,b
        ld      (FSIGN),a
        xor     c
        set     7,b
        set     7,c
        exx
        jp      m,sub_mantissas

        call    shift_q
        add_q
        pop     de
        ld      a,(FSIGN)
        ld      e,a
        jp      nc,fp_round
        exx
        rr      b
        rr      h
        rr      l
        exx
        rr      h
        rr      l
        rr      c
        inc     d
        jp      nz,fp_round
fp_overflow:
        raise   E_OVERFLOW

sub_mantissas:
        call    shift_q
        xor     a
        sub     c
        ld      c,a
        subtract_q
        ld      a,(FSIGN)
        jr      nc,1f
        ex      de,hl                   ; the exponents were equal and Q was larger; no guard bits then
        ld      hl,0
        or      a
        sbc     hl,de
        exx
        ex      de,hl
        ld      hl,0
        sbc     hl,de
        ld      a,0
        sbc     a,b
        ld      b,a
        exx
        ld      a,(FSIGN)
        cpl
1:      pop     de
        ld      e,a

; FACC = P with guard bits C, any number of leading zeros, exponent D, sign in E's bit 7. Too small becomes 0.
fp_norm:
        exx
        ld      a,b
        exx
        or      a
        jp      m,fp_round
        jr      nz,3f
        exx
        any_bits
        jp      z,fp_zero
2:      ld      a,d
        sub     8
        jr      c,underflow
        ld      d,a
        exx
        ld      b,h
        ld      h,l
        exx
        ld      a,h
        exx
        ld      l,a
        ld      a,b
        exx
        ld      h,l
        ld      l,c
        ld      c,0
        or      a
        jr      z,2b
        jp      m,fp_round
3:      dec     d
        jr      z,underflow
        sla     c
        adc     hl,hl
        exx
        adc     hl,hl
        rl      b
        exx
        jp      p,3b

; FACC = P rounded by its guard bits C, exponent D, sign in E's bit 7; P's top bit is 1. Half-way goes to the
; even number.
fp_round:
        ld      a,c
        add     a,a
        jr      nc,fp_pack
        jr      nz,2f
        bit     0,l
        jr      z,fp_pack
2:      inc     l
        jr      nz,fp_pack
        inc     h
        jr      nz,fp_pack
        exx
        inc     l
        jr      nz,1f
        inc     h
        jr      nz,1f
        inc     b
        jr      nz,1f
        ld      b,0x80
        exx
        inc     d
        jr      nz,fp_pack
        jp      fp_overflow
1:      exx

; FACC = P, exponent D, sign in E's bit 7. Leaves P's bytes as they are in memory.
fp_pack:
        ld      a,l
        ld      l,h
        ld      h,a
        ld      (FACC + 4),hl
        exx
        ld      a,l
        ld      l,h
        ld      h,a
        ld      (FACC + 2),hl
        ld      a,b
        exx
        ld      c,a
        ld      a,e
        or      0x7F
        and     c
        ld      (FACC + 1),a
        ld      a,d
        ld      (FACC),a
        ret
underflow:
        jp      fp_zero

; P = FACC, a float, with its sign in place of the top bit. B and A = the exponent.
unpack_p:
        exx
        ld      hl,(FACC + 2)
        ld      a,l
        ld      l,h
        ld      h,a
        ld      a,(FACC + 1)
        ld      b,a
        exx
        ld      hl,(FACC + 4)
        ld      a,l
        ld      l,h
        ld      h,a
        ld      a,(FACC)
        ld      b,a
        ret

; Q = number at HL, with its sign in place of the top bit. C and A = the exponent; Z and 0 when it is zero.
; Changes HL.
unpack_q:
        ld      c,(hl)
        inc     c
        dec     c
        jr      z,1f
        inc     hl
        push    hl
        exx
        pop     hl
        ld      c,(hl)
        inc     hl
        ld      d,(hl)
        inc     hl
        ld      e,(hl)
        inc     hl
        push    hl
        exx
        pop     hl
        ld      d,(hl)
        inc     hl
        ld      e,(hl)
        ld      a,c
        or      a
        ret
1:      inc     hl
        ld      e,(hl)
        inc     hl
        ld      d,(hl)
        call    int_norm
        ret     z
        ld      c,a
        ld      a,d
        exx
        ld      c,a
        exx
        ld      a,e
        ld      de,0
        exx
        ld      d,a
        ld      e,0
        exx
        or      1
        ret

; Q shifted right by B bits, the last 8 of those shifted out in C, whose bit 0 also stands for what is lost behind.
; Changes A, B.
shift_q:
        ld      a,b
        cp      48
        jr      nc,6f
        ld      c,0
1:      cp      5
        jr      c,3f
        sub     8                       ; a byte; beyond the mark by 3 bits at most
        ld      b,a
        ld      a,c
        or      a
        ld      c,e
        jr      z,5f
        set     0,c
5:      ld      e,d
        exx
        ld      a,e
        ld      e,d
        ld      d,c
        ld      c,0
        exx
        ld      d,a
        ld      a,b
        or      a
        jp      p,1b
2:      sla     c
        rl      e
        rl      d
        exx
        rl      e
        rl      d
        rl      c
        exx
        inc     b
        jr      nz,2b
        ret
3:      or      a
        ret     z
        ld      b,a
4:      exx
        srl     c
        rr      d
        rr      e
        exx
        rr      d
        rr      e
        rr      c
        jr      nc,5f
        set     0,c
5:      djnz    4b
        ret
6:      xor     a                       ; nothing is left
        ld      c,a
        ld      d,a
        ld      e,a
        exx
        ld      c,a
        ld      d,a
        ld      e,a
        exx
        ret
