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
        .equ    LINEDIR,  GFXVARS + 10  ; 0 to the right, 255 to the left
        .equ    LINEVERT, GFXVARS + 11  ; 0 down, 255 up
        .equ    LINEHIGH, GFXVARS + 12  ; 0, or 255 when it is higher than wide

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
        picture_width
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
        sbc     a,a
        ld      (LINEDIR),a
        jr      z,line1
        ld      ix,step_left
line1:  ld      (LINEMAX),hl
        ld      hl,(LINETO + 2)
        ld      de,(GFXY)
        ld      b,d
        ld      c,e
        call    distance
        sbc     a,a
        ld      (LINEVERT),a
        jr      z,line2
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
        sbc     a,a
        ld      (LINEHIGH),a
        jr      z,line5
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
        jp      z,walk1
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
        jp      z,line_end
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

; Not all of it is in the picture: it is the coordinates that take the steps, from where the line comes in to where
; it leaves. What lies before is reckoned: after i steps h - i * min of what has gathered is left, and (i * min - h)
; / max, rounded up, steps along the shorter side make up for it.
walk1:  push    bc                      ; stack: X, Y
        push    de
        ld      h,b
        ld      l,c
        ld      bc,(LINEVERT)
        ld      de,239
        call    steps_in
        jp      c,walk_out
        ex      (sp),hl
        push    hl
        ld      bc,(LINEDIR)
        ld      a,(WIDTH)
        ld      e,a
        ld      d,0
        ex      de,hl
        add     hl,hl
        add     hl,hl
        add     hl,hl
        dec     hl
        ex      de,hl
        call    steps_in
        pop     de
        pop     bc                      ; steps before X and Y are inside: HL, BC
        push    de
        jp      c,walk_out
        ld      a,(LINEHIGH)
        or      a
        jr      z,walk2
        push    hl
        ld      h,b
        ld      l,c
        pop     bc
walk2:  push    hl                      ; the longer side; stack: X, Y
        ld      a,b
        or      c
        jr      z,walk3
        dec     bc                      ; ((steps - 1) * max + h) / min, and one more
        ld      de,(LINEMAX)
        push    de
        call    times16
        pop     bc
        srl     b
        rr      c
        add     hl,bc
        jr      nc,walk4
        inc     de
walk4:  ld      bc,(LINEMIN)
        call    by16
        jp      c,walk_none
        inc     hl
        ld      a,h
        or      l
        jp      z,walk_none
        pop     de
        push    de
        sbc     hl,de
        add     hl,de
        jr      c,walk3
        ex      (sp),hl                 ; it takes more
walk3:  ld      hl,(LINEMAX)
        pop     bc                      ; i
        or      a
        sbc     hl,bc
        jp      c,walk_out
        ld      (LINELEFT),hl
        push    bc
        ld      de,(LINEMIN)
        call    times16
        ld      bc,(LINEMAX)            ; less h, and max - 1 to round up
        dec     bc
        add     hl,bc
        jr      nc,walk5
        inc     de
walk5:  inc     bc
        push    bc
        srl     b
        rr      c
        or      a
        sbc     hl,bc
        jr      nc,walk6
        dec     de
walk6:  pop     bc
        call    by16                    ; HL = steps, DE = max - 1 - what is left
        push    hl
        ld      h,b
        ld      l,c
        scf
        sbc     hl,de
        push    hl
        exx
        pop     hl
        exx
        pop     de                      ; steps along the shorter side
        pop     hl                      ; and along the longer one
        ld      a,(LINEHIGH)
        or      a
        jr      nz,walk7
        ex      de,hl
walk7:  ld      a,(LINEDIR)             ; DE = along X, HL = along Y
        or      a
        ex      (sp),hl
        call    go_along
        pop     de
        ex      (sp),hl                 ; HL = Y, stack: X
        ld      a,(LINEVERT)
        or      a
        call    go_along
        ld      b,h
        ld      c,l
        pop     de
walk10: call    inside
        jp      nc,line_end
        push    bc
        push    de
        call    pixel
        call    set_pixel
        pop     de
        pop     bc
        ld      hl,(LINELEFT)
        ld      a,h
        or      l
        jp      z,line_end
        dec     hl
        ld      (LINELEFT),hl
        exx
        sbc     hl,de
        jr      nc,walk11
        add     hl,bc
        exx
        call    step_minor
        jr      walk12
walk11: exx
walk12: call    step_major
        jr      walk10
walk_none:
        pop     hl
walk_out:
        pop     hl
        pop     hl
        jp      line_end

; HL = HL + DE when Z, else HL - DE. Changes F.
go_along:
        jr      nz,along1
        add     hl,de
        ret
along1: or      a
        sbc     hl,de
        ret

; HL = steps from the coordinate HL until it is 0 to DE, C = 255 when they go down; CF = 1 when it never is.
; Changes AF.
steps_in:
        bit     7,h
        jr      nz,steps2
        or      a
        sbc     hl,de
        jr      z,steps1
        jr      c,steps1
        ld      a,c
        cpl
        rla
        ret
steps1: ld      hl,0
        or      a
        ret
steps2: negate_word h,l
        ld      a,c
        rla
        ret

; DE:HL = BC * DE. Changes AF.
times16:
        ld      hl,0
        ld      a,16
times1: add     hl,hl
        rl      e
        rl      d
        jr      nc,times2
        add     hl,bc
        jr      nc,times2
        inc     de
times2: dec     a
        jr      nz,times1
        ret

; HL = DE:HL / BC, DE = the rest; CF = 1 when HL would be above 65535. Changes AF.
by16:   ex      de,hl
        or      a
        sbc     hl,bc
        add     hl,bc
        ccf
        ret     c
        ld      a,16
by1:    ex      de,hl
        add     hl,hl
        ex      de,hl
        adc     hl,hl
        jr      c,by2
        sbc     hl,bc
        jr      nc,by3
        add     hl,bc
        jr      by4
by2:    or      a
        sbc     hl,bc
by3:    inc     e
by4:    dec     a
        jr      nz,by1
        ex      de,hl
        or      a
        ret

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
        negate_word h,l
        scf
        ret
distance3:
        or      a
        ret
