; Text to number.
        .include "math/math.inc"
        .globl  fp_parse, times_10, double_p
        .text

; FACC = the number written at HL: digits with or without a point, then perhaps E, a sign and digits (an E
; without digits is not taken). HL is left behind it, and CF = 0; CF = 1 when there is no number, HL as it was.
; No sign in front, no blanks. Too large a number is E_OVERFLOW, too small a one 0.
; Changes AF, BC, DE and the alternates.
fp_parse:
        push    hl
        ld      de,0
1:      ld      a,(hl)                  ; up to five digits without point and exponent: 16 bits
        sub     '0'
        cp      10
        jr      nc,2f
        ld      c,a
        ld      a,d
        cp      12
        jr      nc,long_number          ; 3072 or more
        ld      a,c
        ex      de,hl
        ld      b,h
        ld      c,l
        add     hl,hl
        add     hl,hl
        add     hl,bc
        add     hl,hl
        ld      c,a
        ld      b,0
        add     hl,bc
        ex      de,hl
        inc     hl
        jr      1b
2:      cp      '.' - '0' & 0xFF
        jr      z,long_number
        and     0xDF
        cp      'E' - '0'
        jr      z,long_number
        pop     bc
        or      a
        sbc     hl,bc
        add     hl,bc
        scf
        ret     z                       ; no digit
        ex      de,hl
        call    fp_fromint
        ex      de,hl
        or      a
        ret

; From the start again. BC = text, P = the digits as a whole number as far as 40 bits go.
long_number:
        pop     bc
        push    bc
        xor     a
        ld      (PFLAGS),a
        ld      (PGUARD),a
        ld      h,a
        ld      l,a
        ld      (PDEXP),hl
        exx
        ld      h,a
        ld      l,a
        ld      b,a
        exx
1:      ld      a,(bc)
        inc     bc
        sub     '0'
        cp      10
        jr      c,2f
        cp      '.' - '0' & 0xFF
        jr      nz,end_of_digits
        ld      a,(PFLAGS)
        add     a,a
        jr      c,end_of_digits         ; a second point
        rra
        or      0x80
        ld      (PFLAGS),a
        jr      1b
2:      push    hl
        ld      hl,PFLAGS
        set     0,(hl)
        ld      e,a
        exx
        ld      a,b
        exx
        cp      0x19
        jr      nc,4f
        bit     7,(hl)                  ; 10 times P and the digit still fit
        ld      hl,(PDEXP)
        jr      z,3f
        dec     hl
        ld      (PDEXP),hl
3:      pop     hl
        push    bc
        ld      a,e
        call    times_10
        pop     bc
        jr      1b
4:      bit     1,(hl)                  ; no room: the first such digit goes into the guard bits
        jr      nz,5f
        set     1,(hl)
        ld      a,e
        add     a,a
        add     a,e
        add     a,a
        add     a,a
        add     a,e
        add     a,a                     ; 26 times the digit
        ld      (PGUARD),a
5:      bit     7,(hl)
        jr      nz,6f
        ld      hl,(PDEXP)
        inc     hl
        ld      (PDEXP),hl
6:      pop     hl
        jr      1b

end_of_digits:
        dec     bc
        ld      a,(PFLAGS)
        rra
        jr      c,1f
        pop     hl                      ; a point alone
        scf
        ret
1:      pop     af
        push    bc
        ld      a,(PGUARD)
        ld      c,a
        ld      de,168 << 8
        call    fp_norm
        pop     hl
        ld      a,(hl)
        and     0xDF
        cp      'E'
        jr      nz,5f

        push    hl
        inc     hl
        ld      a,(hl)
        ld      c,a                     ; sign
        cp      '-'
        jr      z,2f
        cp      '+'
        jr      nz,3f
2:      inc     hl
3:      ld      a,(hl)
        sub     '0'
        cp      10
        jr      c,4f
        pop     hl                      ; no exponent after all
        jr      5f
4:      ex      (sp),hl
        pop     hl
        ld      de,0
6:      ld      a,(hl)
        sub     '0'
        cp      10
        jr      nc,7f
        inc     hl
        bit     2,d
        jr      nz,6b                   ; 1024 or more is as good as endless
        push    hl
        ld      h,d
        ld      l,e
        add     hl,hl
        add     hl,hl
        add     hl,de
        add     hl,hl
        ld      e,a
        ld      d,0
        add     hl,de
        ex      de,hl
        pop     hl
        jr      6b
7:      push    hl
        ld      hl,(PDEXP)
        ld      a,c
        cp      '-'
        jr      nz,8f
        sbc     hl,de
        jr      9f
8:      add     hl,de
9:      ld      (PDEXP),hl
        pop     hl

5:      push    hl
        call    fp_sign
        jr      z,9f
        ld      hl,(PDEXP)
        ld      a,l
        rla
        sbc     a,a
        cp      h
        jr      nz,1f
        ld      a,l
        call    scale_10
        call    fp_tidy
        jr      9f
1:      bit     7,h                     ; beyond -128 to 127
        jp      z,fp_overflow
        call    fp_zero
9:      pop     hl
        or      a
        ret

; P = 10 * P + A, A = 0 to 9; B = what runs over. Changes AF, DE, C', D', E'.
times_10:
        ld      b,0
        push    af
        ld      d,h
        ld      e,l
        exx
        ld      d,h
        ld      e,l
        ld      c,b
        exx
        call    double_p
        rl      b
        call    double_p
        rl      b
        add_q
        jr      nc,1f
        inc     b
1:      call    double_p
        rl      b
        pop     af
        ld      e,a
        ld      d,0
        add     hl,de
        ret     nc
        exx
        inc     l
        jr      nz,2f
        inc     h
        jr      nz,2f
        inc     b
2:      exx
        ret

; P = 2 * P, CF = the bit shifted out. Changes F.
double_p:
        add     hl,hl
        exx
        adc     hl,hl
        rl      b
        exx
        ret
