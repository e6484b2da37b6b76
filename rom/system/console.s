; Characters to the screen: con_out with its control codes, and the cursor's place.
        .include "memory.inc"
        .globl  con_out, con_str, con_column, con_width, con_locate, con_clear
        .globl  put_char, new_line, joined_flag
        .text

; Character A to the screen: 0x20 to 0x9F as they are, anything above as 0x7F; control codes below, others
; have no effect. Changes AF.
con_out:
        push    hl
        push    de
        push    bc
        ld      hl,out_done
        push    hl
        cp      0x20
        jp      nc,put_char
        ld      hl,WRAPPED
        cp      13
        jr      z,out_return
        ld      (hl),0
        ld      de,(CURCOL)             ; D row, E column
        sub     7
        jp      z,out_bell
        dec     a
        jr      z,cursor_left
        dec     a
        jr      z,cursor_right
        dec     a
        jr      z,line_feed
        dec     a
        jr      z,cursor_up
        dec     a
        ret     nz
        jp      con_clear
out_done:
        pop     bc
        pop     de
        pop     hl
        ret

; A row that the last character has filled needs no new line: the cursor is on it already, and what has
; wrapped is no continuation then.
out_return:
        bit     0,(hl)
        ld      (hl),0
        jr      z,new_line
        ld      de,(CURCOL)
        jr      start_row

; The cursor to the first column of the next row, where a new line starts. Changes AF, BC, DE, HL.
new_line:
        call    next_row
start_row:
        ld      a,d
        call    joined_flag
        ld      (hl),0
        ret

; The cursor to the first column of the next row, scrolling. D = the row. Changes AF, BC, DE, HL.
next_row:
        ld      de,(CURCOL)
        ld      e,0
        inc     d
        ld      a,d
        cp      24
        push    af
        call    nc,scroll_up
        pop     af
        ld      de,23*256
        jr      nc,set_cursor
        ld      d,a
set_cursor:
        ld      (CURCOL),de
        ret

; HL = row flag of row A. Changes A.
joined_flag:
        add     a,JOINED & 0xFF
        ld      l,a
        ld      h,JOINED >> 8
        ret

; A row down, the last one scrolls.
line_feed:
        ld      a,d
        cp      23
        jr      c,cursor_down
        push    de
        call    scroll_up
        pop     de
        jr      set_cursor

; One step from DE, stopped by the edges except that left and right go on in the row above or below.
cursor_left:
        dec     e
        jp      p,set_cursor
        ld      a,(WIDTH)
        dec     a
        ld      e,a
        dec     d
        jp      p,set_cursor
        ret
cursor_right:
        inc     e
        ld      a,(WIDTH)
        cp      e
        jr      nz,set_cursor
        ld      e,0
cursor_down:
        inc     d
        ld      a,d
        cp      24
        jr      c,set_cursor
        ret
cursor_up:
        dec     d
        jp      p,set_cursor
        ret

; Half-way bell: does not wait, replaces a tone that sounds.
out_bell:
        ld      hl,4096 - 222           ; 880 Hz
        ld      bc,6
        ld      a,10
        jp      snd_start

; Character A at the cursor, which moves on; behind the last column to the next row, which continues this
; one. Changes AF, BC, DE, HL.
put_char:
        cp      0xA0
        jr      c,put1
        ld      a,0x7F
put1:   ld      de,(CURCOL)
        call    store_char
        ld      hl,WRAPPED
        ld      (hl),0
        ld      de,(CURCOL)
        inc     e
        ld      a,(WIDTH)
        cp      e
        jr      nz,set_cursor
        ld      (hl),1
        call    next_row
        ld      a,d
        call    joined_flag
        ld      (hl),1
        ret

; Text at HL, ended by 0, to the screen. Changes AF, HL.
con_str:
        ld      a,(hl)
        inc     hl
        or      a
        ret     z
        call    con_out
        jr      con_str

; A = column of the cursor, from 0. Keeps the rest.
con_column:
        ld      a,(CURCOL)
        ret

; A = number of columns: 64, 32, 16. Keeps the rest.
con_width:
        ld      a,(WIDTH)
        ret

; The cursor to row D, column E, or the last row or column if there is no such. Changes AF, DE.
con_locate:
        ld      a,d
        cp      24
        jr      c,locate1
        ld      d,23
locate1: ld     a,(WIDTH)
        dec     a
        cp      e
        jr      nc,locate2
        ld      e,a
locate2: xor    a
        ld      (WRAPPED),a
        jp      set_cursor

; Clears the screen to paper, cursor home. Changes AF, BC, DE, HL.
con_clear:
        ld      hl,0
        ld      (CURCOL),hl
        ld      (SCROLL),hl
        ld      (LINECOL),hl
        ld      a,h
        ld      (WRAPPED),a
        call    set_start
        ld      hl,SCREENTEXT
        ld      de,SCREENTEXT + 1
        ld      bc,24*64 - 1
        ld      (hl),' '
        ldir
        ld      hl,JOINED
        ld      b,25
clear1: ld      (hl),0
        inc     hl
        djnz    clear1
        xor     a
clear2: push    af
        call    clear_row
        pop     af
        inc     a
        cp      24
        jr      nz,clear2
        ret
