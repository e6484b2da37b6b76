; Powers of ten.
        .include "math/math.inc"
        .globl  scale_10
        .text

; FACC = FACC * 10^A, A = -128 to 127.
scale_10:
        or      a
        ret     z
        push    af
        jp      p,1f
        neg
1:      cp      13
        jr      c,2f
        ld      a,13
2:      ld      c,a                     ; this far in one step
        ld      l,a
        ld      h,0
        ld      d,h
        ld      e,l
        add     hl,hl
        add     hl,hl
        add     hl,de
        ld      de,powers - 5
        add     hl,de
        push    hl
        ld      hl,FTEMP
        call    fp_store
        pop     hl
        call    fp_load
        xor     a
        ld      (FACC + 5),a
        ld      hl,FTEMP
        pop     af
        jp      m,3f
        sub     c
        push    af
        call    fp_mul
        pop     af
        jr      scale_10
3:      add     a,c
        push    af
        call    fp_div
        pop     af
        jr      scale_10

; 10 to 10^13, exact, without the last byte, which is 0.
powers:
        .byte   132, 0x20, 0x00, 0x00, 0x00
        .byte   135, 0x48, 0x00, 0x00, 0x00
        .byte   138, 0x7A, 0x00, 0x00, 0x00
        .byte   142, 0x1C, 0x40, 0x00, 0x00
        .byte   145, 0x43, 0x50, 0x00, 0x00
        .byte   148, 0x74, 0x24, 0x00, 0x00
        .byte   152, 0x18, 0x96, 0x80, 0x00
        .byte   155, 0x3E, 0xBC, 0x20, 0x00
        .byte   158, 0x6E, 0x6B, 0x28, 0x00
        .byte   162, 0x15, 0x02, 0xF9, 0x00
        .byte   165, 0x3A, 0x43, 0xB7, 0x40
        .byte   168, 0x68, 0xD4, 0xA5, 0x10
        .byte   172, 0x11, 0x84, 0xE7, 0x2A
