; Pixels and lines, in the extension ROM. The picture has 512, 256, 128 by 240 pixels, (0,0) top left; what
; lies outside is not drawn. The video RAM stands in page 2 meanwhile.
        .include "memory.inc"
        .globl  gfx_plot, gfx_point, gfx_line
        .globl  gfx_in, gfx_out, pixel, inside, set_pixel, get_pixel, step_left, step_right, step_up, step_down, spot
        .section .ext,"x"

        .equ    LINEMAX,  GFXVARS       ; word: pixels along the longer side
        .equ    LINEMIN,  GFXVARS + 2   ; word: along the shorter one
        .equ    LINELEFT, GFXVARS + 4   ; word: pixels still to come
        .equ    LINETO,   GFXVARS + 6   ; two words: the end

; Video RAM in and out of page 2. Change A.
gfx_in: ld      a,PAGES_EXTVID
        jr      gfx_page
gfx_out: ld     a,PAGES_EXT
gfx_page:
        ld      (PORT2),a
        out     (2),a
        ret

; CF = 1 when the point DE, BC is in the picture. Changes A.
inside: ld      a,b
        or      a
        ret     nz
        ld      a,c
        cp      240
        ret     nc
        push    hl
        ld      a,(WIDTH)
        ld      l,a
        ld      h,0
        add     hl,hl
        add     hl,hl
        add     hl,hl
        scf
        sbc     hl,de                   ; the last one less DE; a negative DE is a large one
        pop     hl
        ccf
        ret

; HL = video address of the pixel DE, BC, which is in the picture; C = its mask in the byte. Changes AF, B, DE.
pixel:  push    bc
        ld      a,(MODE)
        ld      c,a
        ld      b,0
        ld      hl,pixel_masks
        add     hl,bc
        add     hl,bc
        ld      a,3
        sub     c
        ld      b,a
        ld      a,e
        and     (hl)                    ; place in the byte
        inc     hl
        ld      c,(hl)
pixel1: srl     d
        rr      e
        djnz    pixel1
        pop     hl
        ld      h,l
        ld      l,b
        srl     h
        rr      l
        srl     h
        rr      l
        add     hl,de
        ld      de,(SCROLL)
        add     hl,de
        set     7,h
        res     6,h
        or      a
        ret     z
        ld      b,a
pixel2: srl     c
        djnz    pixel2
        ret

; For each mode: which bits of X are the place in the byte, mask of the leftmost pixel.
pixel_masks:
        .byte   7, 0x80, 3, 0x88, 1, 0xAA

; Ink to the pixel C of the byte (HL). Changes AF.
set_pixel:
        ld      a,(INKBYTE)
        xor     (hl)
        and     c
        xor     (hl)
        ld      (hl),a
        ret

; A = colour of the pixel C of the byte (HL). Changes F, B, E.
get_pixel:
        ld      a,(hl)
        and     c
        ld      b,a
        ld      a,(MODE)
        dec     a
        jr      z,get4
        jp      p,get16
        ld      a,b
        or      a
        ret     z
        ld      a,1
        ret
get4:   ld      e,a
        ld      a,b
        and     0x0F
        jr      z,get4a
        ld      e,2
get4a:  ld      a,b
        and     0xF0
        ld      a,e
        ret     z
        inc     a
        ret
get16:  ld      a,b
        bit     0,c
        jr      nz,get16a               ; the right one has the even bits
        rrca
get16a: ld      b,4
get16b: rlca
        rlca
        rl      e
        djnz    get16b
        ld      a,e
        and     0x0F
        ret

; The pixel C of the byte (HL) one on. Changes AF (up and down), F, C, HL.
step_right:
        rrc     c
        ret     nc
        inc     l
        ret
step_left:
        rlc     c
        ret     nc
        dec     l
        ret
step_down:
        ld      a,l
        add     a,64
        ld      l,a
        ret     nc
        inc     h
        res     6,h
        ret
step_up:
        ld      a,l
        sub     64
        ld      l,a
        ret     nc
        dec     h
        set     7,h
        res     6,h
        ret

; Ink to the point DE, BC, if it is in the picture. Changes AF, BC, DE, HL.
spot:   call    inside
        ret     nc
        call    pixel
        jr      set_pixel

; The point DE, BC in ink; lines go on from there. Changes AF, BC, DE, HL.
gfx_plot:
        ld      (GFXX),de
        ld      (GFXY),bc
        call    gfx_in
        call    spot
        jp      gfx_out

; A = colour of the point DE, BC: palette number, or the colour in 16 colours; 255 outside. Changes F, BC, DE, HL.
gfx_point:
        call    inside
        ld      a,255
        ret     nc
        call    gfx_in
        call    pixel
        call    get_pixel
        ld      l,a
        call    gfx_out
        ld      a,l
        ret

; A line in ink from the last point to DE, BC, both ends included. Changes AF, BC, DE, HL and their
; alternates. Each step goes one pixel along the longer side; along the shorter one when what has gathered
; passes half a pixel.
gfx_line:
        push    ix
        push    iy
        ld      (LINETO),de
        ld      (LINETO + 2),bc
        call    inside
        sbc     a,a
        push    af
        ld      ix,step_right           ; the directions of a line within the picture
        ld      iy,step_down
        ld      hl,(LINETO)
        ld      de,(GFXX)
        push    de
        call    distance
        jr      nc,line1
        ld      ix,step_left
line1:  ld      (LINEMAX),hl
        ld      hl,(LINETO + 2)
        ld      de,(GFXY)
        ld      b,d
        ld      c,e
        call    distance
        jr      nc,line2
        ld      iy,step_up
line2:  ld      (LINEMIN),hl
        pop     de
        call    inside
        sbc     a,a
        pop     hl
        and     h
        ld      (LINELEFT),a            ; not 0: all of it is in the picture
        jr      nz,line4
        push    ix                      ; otherwise it is the coordinates that take the steps
        pop     hl
        ld      a,l
        ld      ix,walk_right
        cp      step_right & 0xFF
        jr      z,line3
        ld      ix,walk_left
line3:  push    iy
        pop     hl
        ld      a,l
        ld      iy,walk_down
        cp      step_down & 0xFF
        jr      z,line4
        ld      iy,walk_up
line4:  push    de
        ld      hl,(LINEMAX)
        ld      de,(LINEMIN)
        or      a
        sbc     hl,de
        jr      nc,line5
        ld      hl,(LINEMAX)            ; higher than wide
        ld      (LINEMIN),hl
        ld      (LINEMAX),de
        push    ix
        push    iy
        pop     ix
        pop     iy
line5:  exx
        ld      hl,(LINEMAX)
        ld      b,h
        ld      c,l
        srl     h
        rr      l
        ld      de,(LINEMIN)
        exx
        pop     de
        call    gfx_in
        ld      a,(LINELEFT)
        ld      hl,(LINEMAX)
        ld      (LINELEFT),hl
        or      a
        jr      z,walk1
        call    pixel
        ld      a,(INKBYTE)
        ld      b,a
        ld      de,(LINELEFT)
fast1:  ld      a,b
        xor     (hl)
        and     c
        xor     (hl)
        ld      (hl),a
        ld      a,d
        or      e
        jr      z,line_end
        dec     de
        exx
        sbc     hl,de                   ; CF is 0 from OR
        jr      nc,fast2
        add     hl,bc
        exx
        call    step_minor
        jr      fast3
fast2:  exx
fast3:  call    step_major
        jr      fast1
step_major:
        jp      (ix)
step_minor:
        jp      (iy)

walk1:  push    bc
        push    de
        call    spot
        pop     de
        pop     bc
        ld      hl,(LINELEFT)
        ld      a,h
        or      l
        jr      z,line_end
        dec     hl
        ld      (LINELEFT),hl
        exx
        sbc     hl,de
        jr      nc,walk2
        add     hl,bc
        exx
        call    step_minor
        jr      walk3
walk2:  exx
walk3:  call    step_major
        jr      walk1
walk_right:
        inc     de
        ret
walk_left:
        dec     de
        ret
walk_down:
        inc     bc
        ret
walk_up:
        dec     bc
        ret

line_end:
        ld      hl,(LINETO)
        ld      (GFXX),hl
        ld      hl,(LINETO + 2)
        ld      (GFXY),hl
        pop     iy
        pop     ix
        jp      gfx_out

; HL = distance of the signed HL and DE, 0 to 65535; CF = 1 when HL was the smaller. Changes AF.
distance:
        or      a
        sbc     hl,de
        jp      pe,distance1            ; overflow: the sign is the wrong one
        jp      m,distance2
        jr      distance3
distance1:
        jp      m,distance3
distance2:
        xor     a
        sub     l
        ld      l,a
        sbc     a,a
        sub     h
        ld      h,a
        scf
        ret
distance3:
        or      a
        ret
