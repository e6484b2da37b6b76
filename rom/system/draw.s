; Video memory: characters, rows, scrolling, the cursor's cell. All addresses are offsets from SCROLL that
; wrap in the 16 KB of the video RAM, which stands in page 2 meanwhile; a scan line of 64 bytes never lies
; across its end, as SCROLL is a multiple of 64.
        .include "memory.inc"
        .globl  store_char, draw_char, text_addr, clear_row, scroll_up, set_start, copy_row, flip_cursor
        .globl  video_in, video_out
        .text

; HL down by one scan line.
        .macro  next_scanline over
        ld      a,l
        add     a,64
        ld      l,a
        jr      nc,\over
        inc     h
        res     6,h                     ; 0xC000 is 0x8000 again
\over:
        .endm

video_in:
        ld      a,PAGES_VID
        jr      video_out1
video_out:
        ld      a,PAGES
video_out1:
        ld      (PORT2),a
        out     (2),a
        ret

; HL = SCREENTEXT address of row D, column E. Changes AF.
text_addr:
        ld      h,d
        ld      l,0
        srl     h
        rr      l
        srl     h
        rr      l
        ld      a,e
        add     a,l                     ; no carry: l is a multiple of 64
        ld      l,a
        ld      a,h
        add     a,SCREENTEXT >> 8
        ld      h,a
        ret

; HL = video address of row D, scan line 0, column E. Changes AF, BC.
cell_addr:
        ld      h,d
        ld      l,0                     ; 256 * row
        srl     h
        rr      l                       ; 128
        ld      a,d
        add     a,a
        add     a,h
        ld      h,a                     ; and 512
        ld      a,(MODE)
        ld      b,a
        ld      a,e
        inc     b
        jr      cell2
cell1:  add     a,a
cell2:  djnz    cell1
        add     a,l                     ; no carry, as above
        ld      l,a
        ld      bc,(SCROLL)
        add     hl,bc
        set     7,h
        res     6,h
        ret

; Character A (0x20 to 0x9F) into the text at row D, column E, and onto the screen. Changes AF, BC, DE, HL.
store_char:
        ld      c,a
        call    text_addr
        ld      (hl),c
        ld      a,c

; The same on the screen alone. Changes AF, BC, DE, HL.
draw_char:
        push    ix
        ld      hl,INKBYTE
        ld      c,a
        ld      a,(hl)
        inc     hl
        xor     (hl)
        ld      a,c
        jr      nz,draw1
        ld      a,' '                   ; ink on paper of the same colour
draw1:  sub     0x20
        call    cell_glyph
        call    video_in
        ld      a,(PAPERBYTE)
        ld      c,a
        ld      a,(MODE)
        or      a
        jr      nz,draw4
        ld      b,10                    ; one byte a line: ink and paper are 0 or 0xFF
draw2:  ld      a,(de)
        xor     c
        ld      (hl),a
        inc     de
        next_scanline draw3
        djnz    draw2
draw_end:
        pop     ix
        jr      video_out

draw4:  push    de
        pop     ix
        ld      d,c                     ; paper
        ld      b,a
        ld      a,(INKBYTE)
        xor     c
        ld      e,a                     ; what changes for ink
        dec     b
        ld      b,10
        jr      nz,draw16
draw4a: ld      a,(ix+0)                ; two bytes a line, each pixel as bit n and bit n + 4
        ld      c,a
        and     0xF0
        ld      (hl),a
        rrca
        rrca
        rrca
        rrca
        or      (hl)
        and     e
        xor     d
        ld      (hl),a
        inc     l
        ld      a,c
        and     0x0F
        ld      (hl),a
        rlca
        rlca
        rlca
        rlca
        or      (hl)
        and     e
        xor     d
        ld      (hl),a
        dec     l
        inc     ix
        next_scanline draw4b
        djnz    draw4a
        jr      draw_end

draw16: push    bc                      ; four bytes a line, two pixels each
        push    hl
        ld      c,(ix+0)
        ld      b,4
draw16a: rlc    c
        sbc     a,a
        and     0xAA
        ld      (hl),a
        rlc     c
        sbc     a,a
        and     0x55
        or      (hl)
        and     e
        xor     d
        ld      (hl),a
        inc     hl
        djnz    draw16a
        pop     hl
        pop     bc
        inc     ix
        next_scanline draw16b
        djnz    draw16
        jr      draw_end

; HL = video address of row D, column E; DE = glyph of number A. Changes AF, BC.
cell_glyph:
        push    af
        call    cell_addr
        pop     af
        ex      de,hl
        ld      l,a
        ld      h,0
        ld      b,h
        ld      c,a
        add     hl,hl
        add     hl,hl
        add     hl,bc
        add     hl,hl
        ld      bc,font
        add     hl,bc
        ex      de,hl
        ret

; Fills the video memory of row A with paper. By the stack, as nothing is faster: without interrupts for a
; scan line at a time. Changes AF, BC, DE, HL; interrupts are on afterwards.
clear_row:
        ld      d,a
        ld      e,0
        call    cell_addr
        call    video_in
        ld      a,(PAPERBYTE)
        ld      d,a
        ld      e,a
        ld      a,10
clear1: ld      bc,64
        add     hl,bc
        di
        ld      (STACKSAVE),sp
        ld      sp,hl
        .rept   32
        push    de
        .endr
        ld      sp,(STACKSAVE)
        ei
        res     6,h
        dec     a
        jr      nz,clear1
        jp      video_out

; Copies the video memory of row D to the row below. Changes AF, BC, DE, HL.
copy_row:
        ld      e,0
        call    cell_addr
        push    hl
        inc     d
        call    cell_addr
        ex      de,hl
        pop     hl
        call    video_in
        ld      a,10
copy1:  ld      bc,64
        ldir
        res     6,h
        res     6,d
        dec     a
        jr      nz,copy1
        jp      video_out

; Moves all up by a row: the text, and the start of the picture. Changes AF, BC, DE, HL.
scroll_up:
        ld      hl,SCREENTEXT + 64
        ld      de,SCREENTEXT
        ld      bc,23*64
        ldir
        ex      de,hl
        ld      b,64
scroll1: ld     (hl),' '
        inc     hl
        djnz    scroll1
        ld      hl,JOINED + 1           ; the 25th flag is always 0
        ld      de,JOINED
        ld      c,24
        ldir
        ld      hl,JOINED
        ld      (hl),b
        ld      hl,(LINECOL)            ; where the input began moves as well, to the corner at most
        dec     h
        jp      p,scroll2
        ld      hl,0
scroll2: ld     (LINECOL),hl
        ld      hl,(SCROLL)
        ld      de,640
        add     hl,de
        res     6,h
        ld      (SCROLL),hl
        ld      a,23
        call    clear_row

; Tells the CRTC where the picture starts; the unit depends on the mode. Changes AF, B, HL.
set_start:
        ld      hl,(SCROLL)
        ld      a,(MODE)
        ld      b,2
        sub     b
        jr      z,start2                ; 16 colours: bytes
        inc     a
        jr      z,start1                ; 4 colours: 4 bytes
        inc     b                       ; 2 colours: 8 bytes
start1: srl     h
        rr      l
        djnz    start1
start2: ld      b,12
        ld      a,h
        call    crtc_write
        inc     b
        ld      a,l
        jp      crtc_write

; Inverts the cell of the cursor. Changes AF, BC, DE, HL.
flip_cursor:
        ld      hl,CURSHOWN
        ld      a,(hl)
        xor     1
        ld      (hl),a
        ld      de,(CURCOL)
        call    cell_addr
        call    video_in
        ld      de,(INKBYTE)            ; E ink, D paper
        ld      a,d
        xor     e
        jr      nz,flip1
        cpl
flip1:  ld      e,a
        ld      a,(MODE)
        ld      d,a
        ld      b,10
flip2:  push    bc
        push    hl
        ld      b,d
        inc     b
        ld      a,1
        jr      flip4
flip3:  add     a,a
flip4:  djnz    flip3
        ld      b,a                     ; bytes a cell
flip5:  ld      a,(hl)
        xor     e
        ld      (hl),a
        inc     hl
        djnz    flip5
        pop     hl
        pop     bc
        next_scanline flip6
        djnz    flip2
        jp      video_out
