; Which way the tenth digit of a number is rounded, by the number itself. In the extension ROM.
        .include "math/math.inc"
        .globl  rounds_down
        .section .ext,"x"

        .equ    LONG,      FTEMP        ; a byte 0, then a mantissa of LONGBYTES, highest first
        .equ    LONGBYTES, 20           ; 40 bits and those of 5^49

; CF = 1 when the digits before the one at DE stay as they are, CF = 0 when the last of them grows; half-way up. P = what
; is behind that digit, DIGITS = the number without its sign, PDEXP = where the point stands in the digits. Scaling has
; cost the digits an eleventh place at most: only where it could matter the number is compared with the half-way one.
; Keeps DE; changes FACC, DIGITS and FTEMP to FT2.
rounds_down:
        exx
        ld      a,b
        exx
        ld      c,a
        ld      a,(PLAST)
        cp      DIGITS_LOW + 11
        ld      a,(de)
        jr      nz,1f
        cp      '4'
        jr      z,2f
        cp      '5'
        ret     nz
        ld      a,c
        cp      0x60                    ; three roundings are below 0.3 of that digit
        jr      c,halfway
        or      a
        ret
1:      cp      '5'
        ret
2:      ld      a,c
        cp      0xA0
        ret     c

; FACC = the half-way number's mantissa: ten digits and a 5.
halfway:
        push    de
        ld      a,'5'
        ld      (de),a
        xor     a
        ld      h,a
        ld      l,a
        exx
        ld      h,a
        ld      l,a
        ld      b,a
        exx
        ld      de,PDIGITS
1:      ld      a,(de)
        sub     '0'
        push    de
        sys     times_10
        pop     de
        inc     de
        ld      a,e
        cp      DIGITS_LOW + 11
        jr      nz,1b
        ld      c,0
        ld      de,128 << 8 | 0x80      ; the sign is the mantissa's top bit
        sys     fp_norm
        ld      hl,DIGITS + 1
        set     7,(hl)

; The number is to be compared with digits x 10^q: either the digits or the number grow by 5^q, powers of two don't
; matter for mantissas.
        ld      de,FACC + 1
        ld      a,(PDEXP)
        sub     11
        push    af                      ; S = 1: the number grows
        jp      m,2f
        ex      de,hl
        neg
2:      neg
        push    de
        ld      (FSIGN),a
        ld      de,LONG
        xor     a
        ld      (de),a
        inc     de
        ld      bc,5
        ldir
        ex      de,hl
        ld      b,LONGBYTES - 5
3:      ld      (hl),a
        inc     hl
        djnz    3b
        ld      a,(FSIGN)
        or      a
        call    nz,times_5

; Number less half-way number. They are next to each other: bit 6 of the difference is its sign, also when they
; lie on both sides of a power of two.
        pop     de
        ld      hl,4
        add     hl,de
        ex      de,hl
        ld      hl,LONG + 5
        pop     af
        scf
        ccf
        jp      m,5f
        push    hl
        xor     a
        ld      b,LONGBYTES - 5
4:      inc     hl
        or      (hl)
        djnz    4b
        pop     hl
        ex      de,hl
        add     a,0xFF                  ; CF = 1: something behind those five bytes
5:      ld      b,5
6:      ld      a,(de)
        ld      c,a
        ld      a,(hl)
        sbc     a,c
        dec     hl
        dec     de
        djnz    6b
        add     a,a
        add     a,a
        pop     de
        ret

; The mantissa LONG times 5^A, normalised.
times_5:
        push    af
        ld      hl,LONG + LONGBYTES
        ld      bc,LONGBYTES << 8
1:      ld      a,(hl)                  ; itself and a quarter of it
        dec     hl
        ld      d,(hl)
        inc     hl
        rr      d
        rra
        rr      d
        rra
        rr      c                       ; CF of the byte before
        adc     a,(hl)
        ld      (hl),a
        sbc     a,a
        ld      c,a
        dec     hl
        djnz    1b
        inc     c
        jr      nz,3f
        ld      b,LONGBYTES
        scf
2:      inc     hl
        rr      (hl)
        djnz    2b
3:      pop     af
        dec     a
        jr      nz,times_5
        ret
