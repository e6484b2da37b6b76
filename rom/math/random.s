; Random numbers. In the extension ROM.
        .include "math/math.inc"
        .globl  x_rnd
        .section .ext,"x"

; FACC = next number, above 0 and below 1, a multiple of 2^-32. The 32 bits of RNDSEED go through all values but
; 0: x ^= x << 8, x ^= x >> 9, x ^= x << 23.
x_rnd:  ld      hl,(RNDSEED)
        ld      de,(RNDSEED + 2)
        ld      a,h
        or      l
        or      d
        or      e
        jr      nz,1f
        ld      de,0x6A09
        ld      hl,0xE667
1:      ld      a,d
        xor     e
        ld      d,a
        ld      a,e
        xor     h
        ld      e,a
        ld      a,h
        xor     l
        ld      h,a

        ld      b,d
        ld      c,e
        srl     b
        rr      c
        rra
        xor     l
        ld      l,a
        ld      a,h
        xor     c
        ld      h,a
        ld      a,e
        xor     b
        ld      e,a

        ld      a,h
        rra
        ld      a,l
        rra
        ld      b,a
        ld      a,0
        rra
        xor     e
        ld      e,a
        ld      a,b
        xor     d
        ld      d,a

        ld      (RNDSEED),hl
        ld      (RNDSEED + 2),de
        ld      bc,128 << 8
        sys     long_norm
        ret
