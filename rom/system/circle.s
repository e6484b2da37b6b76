; Circles, in the extension ROM.
        .include "memory.inc"
        .globl  gfx_circle
        .section .ext,"x"

        .equ    CENTREX, GFXVARS        ; words
        .equ    CENTREY, GFXVARS + 2
        .equ    ARCX,    GFXVARS + 4    ; point of the first octant, from the centre
        .equ    ARCY,    GFXVARS + 6
        .equ    ARCLEFT, GFXVARS + 10
        .equ    ARCRIGHT, GFXVARS + 12
        .equ    ARCD,    GFXVARS + 8    ; its sign says whether the next point is one line nearer

; A circle in ink round DE, BC with the radius HL, 0 to 8191 lines of the picture (others draw nothing). It is
; round on the screen: across, a line's height is two pixels with 2 colours, one with 4, half of one with 16.
; Changes AF, BC, DE, HL.
gfx_circle:
        ld      a,h
        cp      0x20
        ret     nc
        ld      (CENTREX),de
        ld      (CENTREY),bc
        ld      (ARCY),hl
        ex      de,hl
        ld      hl,1
        or      a
        sbc     hl,de
        ld      (ARCD),hl
        ld      hl,0
        ld      (ARCX),hl
        call    gfx_in
arc1:   ld      de,(ARCX)
        ld      bc,(ARCY)
        call    quarters
        ld      de,(ARCY)
        ld      bc,(ARCX)
        call    quarters
        ld      de,(ARCX)
        ld      hl,(ARCD)
        bit     7,h
        jr      nz,arc2
        ld      bc,(ARCY)               ; D grows by 2 (X - Y) + 5, Y goes down
        or      a
        sbc     hl,bc
        or      a
        sbc     hl,bc
        inc     hl
        inc     hl
        dec     bc
        ld      (ARCY),bc
arc2:   add     hl,de                   ; D grows by 2 X + 3
        add     hl,de
        inc     hl
        inc     hl
        inc     hl
        ld      (ARCD),hl
        inc     de
        ld      (ARCX),de
        ld      hl,(ARCY)
        or      a
        sbc     hl,de
        jp      p,arc1
        jp      gfx_out

; The points DE to the left and right by BC above and below the centre. Changes AF, BC, DE, HL.
quarters:
        ld      a,(MODE)
        dec     a
        jr      z,quarters2             ; one pixel, one line
        jp      p,quarters1
        sla     e                       ; two pixels
        rl      d
        jr      quarters2
quarters1:
        srl     d
        rr      e
quarters2:
        ld      hl,(CENTREX)
        or      a
        sbc     hl,de
        ld      (ARCLEFT),hl
        add     hl,de
        add     hl,de
        ld      (ARCRIGHT),hl
        ld      hl,(CENTREY)
        push    hl
        add     hl,bc
        ex      (sp),hl
        or      a
        sbc     hl,bc
        ld      b,h
        ld      c,l
        call    both
        pop     bc
both:   ld      de,(ARCLEFT)
        push    bc
        call    dot
        pop     bc
        ld      de,(ARCRIGHT)

; The point DE, BC; with 2 colours it is two pixels wide.
dot:    ld      a,(MODE)
        or      a
        jp      nz,spot
        push    bc
        push    de
        call    spot
        pop     de
        pop     bc
        inc     de
        jp      spot
