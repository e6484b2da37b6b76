; Bring-up system ROM of the TV Computer: draws a test picture, scans the keyboard, counts
; interrupts. It shows that processor, paging, CRTC, palette, keyboard and tone work together.
;
; Assembled twice: VERSION = 22 for the 2.2 machine, 12 for the 1.2 machine. The picture names it.
; .text is the first ROM (0x0000), .high the second (0x2000); the code stands in the first, what is
; to be read (texts, font, tables) in the second, so a picture proves that both are in place.
;
; What the user sees: a frame, the name and the version, eight bars in two bands, the ten keyboard
; rows as groups of eight cells (filled = key down), and a block that moves every 16 interrupts.
; Keys 1, 2, 3 select the 2-, 4- and 16-colour mode; every new key press sounds 440 Hz for 6 frames.
;
; RAM, all in U1 (page 1), which every model has:
        .equ    KEYS,     0x4000        ; 10 bytes: keyboard rows 0 to 9, bit set = key down
        .equ    OLDKEYS,  0x400A        ; 10 bytes: the rows as the main loop saw them last
        .equ    TICKS,    0x4014        ; word: cursor interrupts since reset
        .equ    STEPLEFT, 0x4016        ; interrupts until the block's next step, 16 to 1
        .equ    BLOCK,    0x4017        ; block's byte column, 2 to 60, even
        .equ    DRAWN,    0x4018        ; column where the block was drawn, 0 = nowhere
        .equ    PORT3,    0x4019        ; last value of port 3; bits 7-6 select the card slot
        .equ    MODE,     0x401A        ; port 6 without amplitude: 0x80 + video mode 0 to 2
        .equ    AMP,      0x401B        ; amplitude as it stands in port 6, 0 or 0x3C
        .equ    TONELEFT, 0x401C        ; interrupts until the tone ends, 0 = silent
        .equ    PAIRS,    0x4020        ; 4 bytes: video byte for two font pixels 00, 01, 10, 11
        .equ    STACK,    0x8000        ; grows down from the end of U1

        .equ    VIDEO,    0x8000        ; page 2: video RAM, 64 bytes a row, 240 rows
        .equ    ROWBYTES, 64
        .equ    BANNER,   VIDEO + 20*ROWBYTES + 16
        .equ    SUBTITLE, VIDEO + 44*ROWBYTES + 26
        .equ    BARS1,    VIDEO + 72*ROWBYTES + 4
        .equ    BARS2,    VIDEO + 104*ROWBYTES + 4
        .equ    CELLS,    VIDEO + 152*ROWBYTES + 3
        .equ    TRACK,    VIDEO + 184*ROWBYTES
        .equ    FLOOR,    VIDEO + 194*ROWBYTES + 2

        .equ    PAGING,   0x80          ; port 2: SYS, U1, video, U3
        .equ    TONELOW,  0x44          ; pitch 0xE44: 195312.5 / (4096 - 3652) = 440 Hz
        .equ    TONEHIGH, 0x0E          ; port 5: pitch only; bit 4 sounds it, bit 5 (interrupt) stays 0
        .equ    TONEON,   0x1E
        .equ    LOUD,     0x3C          ; amplitude 15 in bits 5-2 of port 6
        .equ    NOSTROBE, 0x80          ; bit 7 of port 6 is the printer strobe, active low

        .text
        jp      start

        .org    0x38, 0xFF
        jp      interrupt

; The NMI request stays on until a reset, so the answer is one: the emulator's reset instruction.
        .org    0x66, 0xFF
        .byte   0xFD, 0xF2

start:  di
        ld      a,PAGING
        out     (2),a
        ld      sp,STACK
        xor     a
        out     (0x0F),a                ; video bank 0 for the processor and for the picture
        out     (3),a
        ld      hl,KEYS                 ; clear the variables up to PAIRS
        ld      b,PAIRS - KEYS
clear1: ld      (hl),a
        inc     hl
        djnz    clear1
        ld      a,16
        ld      (STEPLEFT),a
        ld      a,2
        ld      (BLOCK),a

        ld      a,TONELOW               ; reset leaves port 5 at 0xFF, tone and its interrupt on
        out     (4),a
        ld      a,TONEHIGH
        out     (5),a

; An OUT to ports 0x70 and 0x71 may change A (the CRTC masks it), so A is loaded anew each time.
        ld      hl,crtc
        ld      b,0
crtc1:  ld      a,b
        out     (0x70),a
        ld      a,(hl)
        out     (0x71),a
        inc     hl
        inc     b
        ld      a,b
        cp      CRTCREGS
        jr      nz,crtc1

        ld      hl,palette              ; four palette registers, then the border
        ld      bc,4*256 + 0x60
pal1:   ld      a,(hl)
        out     (c),a
        inc     hl
        inc     c
        djnz    pal1
        ld      a,(hl)
        out     (0),a

        ld      hl,mode4
        call    draw_screen
        im      1
        out     (7),a                   ; whatever is pending is not ours
        ei

; The main loop works once after each interrupt; what it leaves undone by the next one waits.
idle:   halt
        call    take_keys               ; first, so that a tone begins in the frame of its key
        call    draw_block
        call    draw_cells
        jr      idle

; Cursor interrupt, once a frame, below the picture. The request stays up for about 28 T-states, and
; the three pushes put the acknowledge after it: earlier, it would be raised again.
interrupt:
        push    af
        push    bc
        push    hl
        out     (7),a
        ld      hl,KEYS
        ld      a,(PORT3)
        and     0xC0
        ld      c,a
        ld      b,10
scan1:  ld      a,c
        out     (3),a
        in      a,(0x58)
        cpl
        ld      (hl),a
        inc     hl
        inc     c
        djnz    scan1
        ld      a,(PORT3)
        out     (3),a

        ld      hl,(TICKS)
        inc     hl
        ld      (TICKS),hl

        ld      hl,STEPLEFT
        dec     (hl)
        jr      nz,tone1
        ld      (hl),16
        ld      hl,BLOCK                ; the block is two columns wide and steps by its width
        inc     (hl)
        inc     (hl)
        ld      a,(hl)
        cp      62
        jr      nz,tone1
        ld      (hl),2

tone1:  ld      a,(TONELEFT)
        or      a
        jr      z,done
        dec     a
        ld      (TONELEFT),a
        jr      nz,done
        ld      (AMP),a
        call    port6
        ld      a,TONEHIGH
        out     (5),a
done:   pop     hl
        pop     bc
        pop     af
        ei
        reti

; Writes port 6 from MODE and AMP. Changes A and HL.
port6:  ld      a,(MODE)
        ld      hl,AMP
        or      (hl)
        out     (6),a
        ret

; Finds new key presses: one of 1, 2, 3 draws the screen in its mode, any sounds the tone.
; The interrupt that ended HALT has just filled KEYS and the next is a frame away.
take_keys:
        ld      a,(OLDKEYS)
        cpl
        ld      hl,KEYS
        and     (hl)
        push    af                      ; new ones of row 0, which holds 1, 2 and 3
        ld      de,OLDKEYS
        ld      bc,10*256
keys1:  ld      a,(de)
        cpl
        and     (hl)
        or      c
        ld      c,a
        ld      a,(hl)
        ld      (de),a
        inc     hl
        inc     de
        djnz    keys1
        ld      a,c
        or      a
        call    nz,beep
        pop     af
        ld      hl,mode2
        bit     6,a                     ; 1
        jr      nz,draw_screen
        ld      hl,mode4
        bit     2,a                     ; 2
        jr      nz,draw_screen
        ld      hl,mode16
        bit     1,a                     ; 3
        jr      nz,draw_screen
        ret

; Sounds the tone; the interrupt ends it.
beep:   di
        ld      a,TONEON
        out     (5),a
        ld      a,LOUD
        ld      (AMP),a
        call    port6
        ld      a,6
        ld      (TONELEFT),a
        ei
        ret

; Draws the whole picture in the mode whose table is at HL.
draw_screen:
        ld      a,(hl)
        ld      (MODE),a
        inc     hl
        ld      de,PAIRS
        ld      bc,4
        ldir
        push    hl                      ; bars of the upper band, then of the lower
        call    port6
        ld      hl,VIDEO
        ld      de,VIDEO + 1
        ld      bc,240*ROWBYTES - 1
        ld      (hl),0
        ldir
        xor     a
        ld      (DRAWN),a

        ld      d,0xFF                  ; frame: every bit set is the brightest pixel in all modes
        ld      hl,VIDEO
        ld      bc,4*256 + 64
        call    fill
        ld      hl,VIDEO + 236*ROWBYTES
        ld      bc,4*256 + 64
        call    fill
        ld      hl,VIDEO
        ld      bc,240*256 + 1
        call    fill
        ld      hl,VIDEO + 63
        ld      bc,240*256 + 1
        call    fill
        ld      hl,FLOOR
        ld      bc,2*256 + 60
        call    fill

        ld      hl,BANNER
        ld      de,name
        call    draw_text
        ld      hl,SUBTITLE
        ld      de,version
        call    draw_text
        pop     de
        ld      hl,BARS1
        call    draw_bars
        ld      hl,BARS2

; Eight bars from HL, 7 bytes wide and 32 rows high, of the eight bytes at DE. Returns DE behind them.
draw_bars:
        ld      b,8
bars1:  push    bc
        push    hl
        ld      a,(de)
        inc     de
        push    de
        ld      d,a
        ld      bc,32*256 + 7
        call    fill
        pop     de
        pop     hl
        ld      bc,7
        add     hl,bc
        pop     bc
        djnz    bars1
        ret

; Fills B rows of C bytes from HL with D. Keeps DE.
fill:   push    bc
        push    hl
        ld      b,c
fill1:  ld      (hl),d
        inc     hl
        djnz    fill1
        pop     hl
        ld      bc,ROWBYTES
        add     hl,bc
        pop     bc
        djnz    fill
        ret

; Text at DE, ended by 0, to HL in double size: a character is 4 bytes wide and 16 rows high.
draw_text:
        ld      a,(de)
        or      a
        ret     z
        inc     de
        push    de
        push    hl
        call    draw_glyph
        pop     hl
        ld      bc,4
        add     hl,bc
        pop     de
        jr      draw_text

; Character A to HL, each row of its font twice. A character without a glyph is a blank.
draw_glyph:
        push    hl
        ld      c,a
        ld      hl,font
        ld      de,8
glyph1: ld      a,(hl)
        inc     hl
        or      a
        jr      z,glyph2
        cp      c
        jr      z,glyph2
        add     hl,de
        jr      glyph1
glyph2: ex      de,hl
        pop     hl
        ld      b,8
glyph3: push    bc
        ld      a,(de)
        inc     de
        push    de
        ld      b,2
        call    draw_cell
        pop     de
        pop     bc
        djnz    glyph3
        ret

; Eight pixels A to the 4 bytes at HL, on B rows. Returns HL on the row below. Changes A, BC, DE.
draw_cell:
        push    bc
        ld      c,a
        ld      b,4
cell1:  rlc     c                       ; the next two pixels are one byte of the video RAM
        rlc     c
        ld      a,c
        and     3
        add     a,PAIRS & 0xFF
        ld      e,a
        ld      d,PAIRS >> 8
        ld      a,(de)
        ld      (hl),a
        inc     hl
        djnz    cell1
        ld      a,c                     ; four times two turns: the eight pixels again
        ld      de,ROWBYTES - 4
        add     hl,de
        pop     bc
        djnz    draw_cell
        ret

; The keyboard rows as cells: row 0 on the left, bit 7 of each row first.
draw_cells:
        ld      hl,CELLS
        ld      de,KEYS
        ld      b,10
cells1: push    bc
        push    hl
        ld      a,(de)
        inc     de
        push    de
        ld      b,6
        call    draw_cell
        ld      d,0xFF                  ; a line under the group shows where it is
        ld      bc,1*256 + 4
        call    fill
        pop     de
        pop     hl
        ld      bc,6
        add     hl,bc
        pop     bc
        djnz    cells1
        ret

; Moves the drawn block to its column. Drawn before the old one is wiped out, so no picture lacks it.
draw_block:
        ld      a,(BLOCK)
        ld      hl,DRAWN
        cp      (hl)
        ret     z
        ld      e,(hl)
        ld      (hl),a
        ld      d,0xFF
        call    block1
        ld      a,e
        or      a
        ret     z
        ld      d,0
block1: ld      hl,TRACK                ; 8 rows of the block at column A, filled with D
        ld      b,0
        ld      c,a
        add     hl,bc
        ld      bc,8*256 + 2
        jp      fill

        .section .high,"x"

name:   .asciz  "QUOLLEMU"
        .if     VERSION == 22
version: .asciz "2.2"
        .else
version: .asciz "1.2"
        .endif

; CRTC registers 0 to 15: 64 characters by 60 rows of four lines, centred in the border.
; left = (83 - R2) * 8 = 64, top = (R5 - R7 * 4) * 2 + 572 = 48. The cursor stands at position 0xF80,
; behind the picture's 60 * 64 = 0xF00 characters; R10 below 4 lets it raise the interrupt.
crtc:   .byte   99, 64, 75, 0x32, 77, 2, 60, 66, 0, 3, 3, 3, 0, 0, 0x0F, 0x80
        .equ    CRTCREGS, 16

; Palette bits: 0 blue, 2 red, 4 green, 6 bright. The border has the same four one bit higher.
palette: .byte  0x01, 0x54, 0x44, 0x55  ; blue, yellow, red, white
        .byte   0x22                    ; cyan

; A mode: port 6, the four pixel pairs, eight bars of the upper band, eight of the lower.
; In each mode a byte is eight picture points wide, so a pair of font pixels fits one byte in all.
mode2:  .byte   NOSTROBE + 0            ; eight pixels a byte
        .byte   0x00, 0x0F, 0xF0, 0xFF
        .byte   0x00, 0xFF, 0xAA, 0x55, 0xCC, 0x33, 0xF0, 0x0F
        .byte   0x80, 0xC0, 0xE0, 0xF0, 0xF8, 0xFC, 0xFE, 0xFF
mode4:  .byte   NOSTROBE + 1            ; four pixels: low bits in the high nibble, high in the low
        .byte   0x00, 0x33, 0xCC, 0xFF
        .byte   0x00, 0xF0, 0x0F, 0xFF, 0xA0, 0x05, 0x5A, 0xC3
        .byte   0xC3, 0x5A, 0x05, 0xA0, 0xFF, 0x0F, 0xF0, 0x00
mode16: .byte   NOSTROBE + 2            ; two pixels: odd bits left, even bits right
        .byte   0x00, 0x55, 0xAA, 0xFF
        .byte   0x00, 0x03, 0x0C, 0x0F, 0x30, 0x33, 0x3C, 0x3F  ; the eight colours
        .byte   0xC0, 0xC3, 0xCC, 0xCF, 0xF0, 0xF3, 0xFC, 0xFF  ; and bright
