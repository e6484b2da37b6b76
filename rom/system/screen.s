; Colour modes, inks, palette, border.
        .include "memory.inc"
        .globl  set_pen, gfx_mode, gfx_ink, gfx_paper, gfx_palette, gfx_border
        .text

; Mode A = 0, 1, 2: 2, 4, 16 colours with 64, 32, 16 columns. Other values do nothing. Clears the screen;
; ink and paper become 1 and 0, in 16 colours 15 and 1. Changes AF, BC, DE, HL.
gfx_mode:
        cp      3
        ret     nc
        ld      hl,MODE
        ld      (hl),a
        inc     hl
        ld      (hl),64
        ld      bc,0x0001               ; B paper, C ink
        or      a
        jr      z,mode1
        srl     (hl)
        cp      1
        jr      z,mode1
        srl     (hl)
        ld      bc,0x010F
mode1:  ld      e,a
        di
        ld      a,(PORT6)
        and     0x3C
        or      e
        or      0x80                    ; printer strobe, active low
        ld      (PORT6),a
        out     (6),a
        ei
        push    bc
        ld      a,c
        call    gfx_ink
        pop     af
        call    gfx_paper
        ld      hl,0
        ld      (GFXX),hl
        ld      (GFXY),hl
        jp      con_clear

; Ink or paper A: 0 to 3 of the palette (0 and 1 with 2 colours), with 16 colours the colour itself, bit 0
; blue, 1 red, 2 green, 3 bright. Higher bits are ignored. Changes AF, BC, HL.
gfx_ink:
        ld      hl,INK
        call    set_pen
        ld      (INKBYTE),a
        ret
gfx_paper:
        ld      hl,PAPER
        call    set_pen
        ld      (PAPERBYTE),a
        ret

; (HL) = A, then A = a video byte full of it.
set_pen:
        ld      b,a
        ld      a,(MODE)
        cp      1
        ld      a,b
        jr      z,pen4
        jr      nc,pen16
        and     1
        ld      (hl),a
        neg
        ret
pen4:   and     3
        ld      (hl),a
        rrca                            ; bit 0 fills the high nibble, bit 1 the low one
        sbc     a,a
        and     0xF0
        bit     1,(hl)
        ret     z
        or      0x0F
        ret
pen16:  and     0x0F
        ld      (hl),a
        call    spread
        ld      b,a
        add     a,a
        or      b
        ret

; Bits 3 to 0 of A to bits 6, 4, 2, 0. Changes AF, BC.
spread: ld      b,4
        ld      c,a
        xor     a
spread1: add    a,a
        add     a,a
        bit     3,c
        jr      z,spread2
        inc     a
spread2: sla    c
        djnz    spread1
        ret

; Palette register A (0 to 3) takes the colour C (bits as above). Others do nothing. Changes AF, BC.
gfx_palette:
        cp      4
        ret     nc
        add     a,0x60
        push    af
        ld      a,c
        call    spread
        pop     bc
        ld      c,b
        out     (c),a
        ret

; The border takes the colour A. Changes AF, BC.
gfx_border:
        call    spread
        add     a,a
        out     (0),a
        ret
