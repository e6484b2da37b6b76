; Number to text.
        .include "math/math.inc"
        .globl  fp_print, fp_digits
        .text

; FTEXT = FACC in decimal, ended by 0; HL = FTEXT. Ten significant digits without trailing zeros, rounded once from
; the exact value, half-way up; from 1E-5 to below 1E10 as it is, beyond with an exponent. "-" or nothing in front.
; FACC is changed. Changes AF, BC, DE and the alternates.
; fp_digits: the same with A significant digits, 6 to 14; with others than ten the last may be off by one.
fp_print:
        ld      a,10
fp_digits:
        add     a,DIGITS_LOW + 1
        ld      (PLAST),a
        ld      hl,FTEXT
        call    fp_sign
        jp      p,1f
        ld      (hl),'-'
        inc     hl
        push    hl
        call    fp_neg
        pop     hl
1:      push    hl
        ld      hl,DIGITS
        call    fp_store
        xor     a
        ld      (PDEXP),a
        ld      h,a
        ld      l,a
        ld      de,(FACC + 1)
        exx
        ld      h,a
        ld      l,a
        ld      b,a
        exx
        ld      a,(FACC)
        or      a
        jr      z,4f
        cp      129
        jr      c,2f
        cp      145
        jr      c,3f
2:      ld      de,77                   ; 256 * log 2: A = the decimal exponent, or one less
        call    mul_8
        ld      a,h
        sub     39
        ld      (PDEXP),a
        neg
        call    scale_10
3:      call    unpack_p                ; 1 to below 65536, or 1 less a trifle
        exx
        set     7,b
        exx
        sub     128
        ld      de,0
        jr      z,4f
        ld      b,a
5:      call    double_p
        rl      e
        rl      d
        djnz    5b

; DE = the whole part, P = the fraction.
4:      push    hl
        ex      de,hl
        ld      de,PDIGITS
        ld      bc,-10000
        call    digit
        ld      bc,-1000
        call    digit
        ld      bc,-100
        call    digit
        ld      bc,-10
        call    digit
        ld      bc,-1
        call    digit
        pop     hl
        ld      a,e
        sub     DIGITS_LOW
        ld      c,a
        ld      a,(PDEXP)
        add     a,c
        ld      (PDEXP),a               ; where the point stands in the digits
1:      ld      a,(PLAST)
        cp      e
        jr      z,2f
        exx
        ld      a,b
        or      h
        or      l
        exx
        or      h
        or      l
        jr      z,4f
        push    de
        xor     a
        call    times_10
        pop     de
        ld      a,b
        add     a,'0'
        ld      (de),a
        inc     de
        jr      1b

2:      dec     de                      ; the digit behind the last one rounds it
        ext     rounds_down
        jr      c,4f
3:      ld      a,e
        cp      DIGITS_LOW
        jr      z,5f
        dec     de
        ld      a,(de)
        inc     a
        cp      '9' + 1
        jr      z,3b
        ld      (de),a
        jr      6f
5:      ld      hl,PDEXP                ; all nines
        inc     (hl)
        ld      a,'1'
        ld      (de),a
        jr      6f
4:      ld      a,e                     ; trailing zeros
        cp      DIGITS_LOW
        jr      z,7f
        dec     de
        ld      a,(de)
        cp      '0'
        jr      z,4b
6:      inc     de
7:      ld      a,e
        sub     DIGITS_LOW
        ld      b,a                     ; B digits, none for zero
        ld      (PCOUNT),a
        pop     hl
        ld      (hl),'0'
        jr      nz,8f
        inc     hl
        jr      11f

8:      ld      de,PDIGITS
        ld      a,(PDEXP)
        ld      c,a
        add     a,4
        cp      15
        jr      c,1f
        ld      c,1                     ; one digit before the point
1:      push    af                      ; CF = 0: with exponent
        ld      a,c
        dec     a
        jp      p,4f
        inc     hl                      ; "0." and as many zeros as there are
        ld      (hl),'.'
        inc     hl
        inc     c
        jr      3f
2:      ld      (hl),'0'
        inc     hl
        inc     c
3:      dec     c
        jr      z,4f
        inc     c
        jr      2b
4:      ld      a,(de)
        ld      (hl),a
        inc     de
        inc     hl
        dec     c
        djnz    6f
5:      ld      a,c                     ; whole places that have no digit
        dec     a
        jp      m,7f
        ld      c,a
        ld      (hl),'0'
        inc     hl
        jr      5b
6:      jr      nz,4b
        ld      (hl),'.'
        inc     hl
        jr      4b

7:      pop     af
        jr      c,11f
        ld      (hl),'E'
        inc     hl
        ld      (hl),'+'
        ld      a,(PDEXP)
        dec     a
        jp      p,8f
        ld      (hl),'-'
        neg
8:      inc     hl
        ld      (hl),'0' - 1
        cp      10
        jr      c,10f
9:      inc     (hl)
        sub     10
        jr      nc,9b
        add     a,10
        inc     hl
10:     add     a,'0'
        ld      (hl),a
        inc     hl
11:     ld      (hl),0
        ld      hl,FTEXT
        ret

; One digit of HL, whose place is worth -BC, to DE, unless it would be a leading zero.
digit:  ld      a,'0' - 1
1:      inc     a
        add     hl,bc
        jr      c,1b
        sbc     hl,bc
        cp      '0'
        jr      nz,2f
        ld      b,a
        ld      a,e
        cp      DIGITS_LOW
        ret     z
        ld      a,b
2:      ld      (de),a
        inc     de
        ret
