; Filling an area, in the extension ROM. Whole bytes at a time where a byte is all of the area's colour.
        .include "memory.inc"
        .include "basic.inc"
        .globl  gfx_paint, gfx_paint_call
        .section .ext,"x"

        .equ    TARGET,  GFXVARS        ; video byte full of the colour to be painted over
        .equ    SEEDTOP, GFXVARS + 2    ; word: where the next seed goes
        .equ    SEEDEND, GFXVARS + 4    ; word: as far as the seeds may go
        .equ    ABOVE,   GFXVARS + 6    ; 1 while the row above has a seed for the run over this place
        .equ    BELOW,   GFXVARS + 7
        .equ    PX,      GFXVARS + 8    ; word: place on the row
        .equ    PY,      GFXVARS + 10
        .equ    PXEND,   GFXVARS + 12   ; word: pixels of a row
        .equ    PERBYTE, GFXVARS + 14   ; word: pixels of a byte
        .equ    PENSAVE, GFXVARS + 16   ; where the conversion of a colour leaves its number
        .equ    SEEDLOW, GFXVARS + 18   ; word: the first seed's place
        .equ    ROOM,    256            ; bytes of the stack that the seeds leave alone

; Paints with ink from the point DE, BC to the edge of the area of its colour. Seeds, the places to start
; from, stand at the low end of the machine's stack; those for which there is no room are lost, and part of a
; very ragged area stays as it was. A break key ends the painting. Changes AF, BC, DE, HL.
; gfx_paint_call: the same for the system call, whose seeds stand above the interpreter's control stack.
gfx_paint_call:
        ld      hl,(CSP)
        ld      a,h
        sub     STACKLOW >> 8
        cp      (STACKTOP - STACKLOW) >> 8
        jr      c,paint
gfx_paint:
        ld      hl,STACKLOW
paint:  ld      (SEEDLOW),hl
        call    inside
        ret     nc
        call    gfx_in
        push    bc
        push    de
        call    pixel
        call    get_pixel
        ld      hl,PENSAVE
        sys     set_pen
        ld      (TARGET),a
        pop     de
        pop     bc
        ld      hl,INKBYTE
        cp      (hl)
        jp      z,gfx_out
        ld      hl,(SEEDLOW)
        ld      (SEEDTOP),hl
        ld      hl,-ROOM
        add     hl,sp
        ld      (SEEDEND),hl
        picture_width
        ld      (PXEND),hl
        ld      (PX),de
        ld      a,(MODE)
        ld      b,a
        inc     b
        ld      a,16
paint1: rrca
        djnz    paint1
        ld      l,a
        ld      h,0
        ld      (PERBYTE),hl
        ld      b,c
        call    seed

; Takes the last seed; done when there is none.
next_seed:
        ld      a,(BREAKKEY)
        or      a
        jp      nz,gfx_out
        ld      hl,(SEEDTOP)
        ld      de,(SEEDLOW)
        or      a
        sbc     hl,de
        jp      z,gfx_out
        add     hl,de
        dec     hl
        ld      c,(hl)
        dec     hl
        ld      d,(hl)
        dec     hl
        ld      e,(hl)
        ld      (SEEDTOP),hl
        ld      (PX),de
        ld      a,c
        ld      (PY),a
        ld      hl,0
        ld      (ABOVE),hl
        call    pixel
        call    is_target
        jr      nz,next_seed

; To the left end of the run.
left1:  ld      de,(PX)
        ld      a,d
        or      e
        jr      z,right1
        bit     7,c
        jr      z,left2                 ; not the leftmost of its byte
        dec     l
        ld      a,(TARGET)
        cp      (hl)
        jr      z,left3
        inc     l
left2:  dec     de
        call    step_left
        call    is_target
        jr      nz,left4
        ld      (PX),de
        jr      left1
left3:  push    hl                      ; the byte before is all target
        ex      de,hl
        ld      de,(PERBYTE)
        or      a
        sbc     hl,de
        ld      (PX),hl
        pop     hl
        jr      left1
left4:  call    step_right

; To the right end, painting, with seeds above and below where a run of target begins.
right1: bit     7,c
        jr      z,right3
        ld      a,(TARGET)
        cp      (hl)
        jr      nz,right3
        call    byte_above
        jr      nc,right3
        call    byte_below
        jr      nc,right3
        ld      a,(INKBYTE)
        ld      (hl),a
        inc     l
        ld      de,(PERBYTE)
        jr      right4
right3: call    is_target
        jp      nz,next_seed
        call    set_pixel
        call    pixel_above
        call    pixel_below
        call    step_right
        ld      de,1
right4: push    hl
        ld      hl,(PX)
        add     hl,de
        ld      (PX),hl
        ld      de,(PXEND)
        or      a
        sbc     hl,de
        pop     hl
        jr      c,right1
        jp      next_seed

; Z when the pixel C of the byte (HL) is target. Changes AF.
is_target:
        ld      a,(TARGET)
        xor     (hl)
        and     c
        ret

; The row above or below the byte at HL, all of which is to be painted: CF = 0 when its pixels have to be
; looked at one by one. Keep C and HL. Change AF, B, DE.
byte_above:
        ld      a,(PY)
        or      a
        scf
        ret     z                       ; no row, nothing to do
        push    hl
        call    row_above
        jr      byte1
byte_below:
        ld      a,(PY)
        cp      239
        scf
        ret     z
        push    hl
        call    row_below
byte1:  ld      a,(TARGET)
        cp      (hl)
        jr      z,byte2
        ld      a,(INKBYTE)
        cp      (hl)
        jr      z,byte3
        pop     hl
        or      a
        ret
byte2:  call    run_begins
        pop     hl
        scf
        ret
byte3:  xor     a                       ; no run here
        ld      (de),a
        pop     hl
        scf
        ret

; The same for the pixel C of the byte at HL.
pixel_above:
        ld      a,(PY)
        or      a
        ret     z
        push    hl
        call    row_above
        jr      side1
pixel_below:
        ld      a,(PY)
        cp      239
        ret     z
        push    hl
        call    row_below
side1:  call    is_target
        jr      z,side2
        xor     a
        ld      (de),a
        pop     hl
        ret
side2:  call    run_begins
        pop     hl
        ret

; HL one row up or down, B = that row, DE = the flag for it; A = the row of the run. Change AF.
row_above:
        ld      b,a
        dec     b
        ld      de,ABOVE
        jp      step_up
row_below:
        ld      b,a
        inc     b
        ld      de,BELOW
        jp      step_down

; Target at PX in row B: a seed unless the run has one already, by the flag (DE). Changes AF, DE, HL.
run_begins:
        ld      a,(de)
        or      a
        ret     nz
        inc     a
        ld      (de),a

; Puts the seed PX, row B if there is room. Changes AF, DE, HL.
seed:   ld      hl,(SEEDTOP)
        ld      de,(SEEDEND)
        or      a
        sbc     hl,de
        ret     nc
        add     hl,de
        ld      de,(PX)
        ld      (hl),e
        inc     hl
        ld      (hl),d
        inc     hl
        ld      (hl),b
        inc     hl
        ld      (SEEDTOP),hl
        ret
