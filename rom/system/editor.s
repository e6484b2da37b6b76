; The full-screen editor. A logical line is a row and the rows below that are joined to it (row flag 1).
        .include "memory.inc"
        .globl  con_line, con_part, con_from
        .text

        .equ    LONGEST, 250            ; characters of a logical line

; Lets the user edit anywhere on the screen until Enter. The logical line of the cursor, without trailing
; blanks, is then in LINEBUF, ended by 0; of the line where con_line was called only what stands behind that
; place. The cursor goes to the row below. CF = 1 when a break key (3 or 27) ended it: then the line is empty.
; Changes AF, BC, DE, HL; interrupts are on afterwards.
; con_part: the same, but nothing that was printed there counts: the row is blank from the cursor on, and the
; row below begins another line.
con_part:
        ld      de,(CURCOL)
        ld      b,d
        ld      c,' '
        push    de
part1:  call    swap_char
        ld      c,' '
        call    next_cell
        ld      a,b
        cp      d
        jr      z,part1
        pop     de
        ld      a,d
        inc     a
        call    joined_flag
        ld      (hl),0
con_line:
        ld      a,(CURCOL)
; The same with column A of the cursor's row as the place that counts.
con_from:
        ld      hl,(CURCOL)
        ld      l,a
        ld      (LINECOL),hl
edit_loop:
        ld      hl,edit_loop
        push    hl
        call    edit_key
        ld      de,(CURCOL)
        ld      hl,edit_keys
        ld      b,EDITKEYS
        ld      c,a
edit1:  ld      a,(hl)
        inc     hl
        cp      c
        ld      a,(hl)
        inc     hl
        jr      z,edit2
        inc     hl
        djnz    edit1
        ld      a,c
        cp      0x20
        ret     c                       ; other control codes have no effect
        jr      edit_type
edit2:  ld      h,(hl)
        ld      l,a
        ld      a,c
        jp      (hl)

edit_keys:
        .byte   13
        .word   edit_enter
        .byte   3
        .word   edit_break
        .byte   27
        .word   edit_break
        .byte   8
        .word   edit_rubout
        .byte   127
        .word   edit_delete
        .byte   0xA0
        .word   edit_insert
        .byte   0xA1
        .word   edit_home
        .byte   12
        .word   con_out
        .byte   28
        .word   edit_move
        .byte   29
        .word   edit_move
        .byte   30
        .word   edit_vertical
        .byte   31
        .word   edit_vertical
        .equ    EDITKEYS, (. - edit_keys) / 3

; Waits for a key with the cursor blinking: A = code, the cursor's cell as it was.
edit_key:
        ld      a,(TICKS)
        ld      (BLINK),a
blink1: call    key_poll
        jr      nz,blink3
        ld      a,(TICKS)
        ld      hl,BLINK
        sub     (hl)
        rrca
        rrca
        rrca
        rrca
        cpl                             ; 16 interrupts on, 16 off, first on
        ld      hl,CURSHOWN
        xor     (hl)
        rrca
        jr      nc,blink2
        call    flip_cursor
blink2: ei
        halt
        jr      blink1
blink3: push    af
        ld      a,(CURSHOWN)
        or      a
        call    nz,flip_cursor
        pop     af
        ret

; Cursor keys 28 left, 29 right, 30 up, 31 down: the control codes 8, 9, 11, 10. Here the last row stops the cursor.
edit_vertical:
        xor     1
        cp      30
        jr      nz,edit_move
        ld      a,d
        cp      23
        ret     z
        ld      a,30
edit_move:
        sub     20
        jp      con_out

edit_home:
        ld      de,0
        jp      con_locate

; A character C in the place of what is there.
edit_type:
        ld      a,c
        push    af
        call    line_place
        ld      bc,-LONGEST
        add     hl,bc
        jr      c,type_full
        ld      a,(WIDTH)
        dec     a
        cp      e
        call    z,open_next             ; it will go on in the row below
        pop     af
        jp      con_out
type_full:
        pop     af
bell:   ld      a,7
        jp      con_out

; Makes sure that what comes behind row D has a row: the next one when it continues D's line or is blank, else
; a new one between. Below the last row there is none: writing scrolls. Changes AF, BC, DE, HL.
open_next:
        inc     d
        ld      a,d
        cp      24
        ret     z
        call    joined_flag
        ld      a,(hl)
        or      a
        ret     nz
        ld      e,a
        call    text_addr
        ld      b,64
        ld      a,' '
open1:  cp      (hl)
        jr      nz,insert_row
        inc     hl
        djnz    open1
        ret

; A blank row D, 1 to 23: the rows from there on move down, the last one is lost. Changes AF, BC, DE, HL.
insert_row:
        ld      e,0
        ld      hl,LINEROW
        ld      a,(hl)
        cp      d
        jr      c,insert1
        inc     (hl)
insert1: push   de
        call    text_addr
        ex      de,hl
        ld      hl,SCREENTEXT + 23*64
        sbc     hl,de                   ; CF is 0: text_addr ends with an addition without carry
        ld      b,h
        ld      c,l
        ld      hl,SCREENTEXT + 23*64 - 1
        ld      de,SCREENTEXT + 24*64 - 1
        call    nz,move_down
        pop     de
        push    de
        ld      a,23
        sub     d
        ld      b,0
        ld      c,a
        ld      hl,JOINED + 22
        ld      de,JOINED + 23
        call    nz,move_down
        ld      d,22
insert2: pop    hl
        push    hl
        ld      a,d
        cp      h
        jr      c,insert3
        push    de
        call    copy_row
        pop     de
        dec     d
        jr      insert2
insert3: pop    de
        ld      a,d
        call    joined_flag
        ld      (hl),0
        call    text_addr
        ld      b,64
insert4: ld     (hl),' '
        inc     hl
        djnz    insert4
        ld      a,d
        jp      clear_row
move_down:
        lddr
        ret

; A blank at the cursor; the rest of the line moves on, if need be into a row more.
edit_insert:
        push    de
        call    line_end
        ld      a,(WIDTH)
        dec     a
        ld      e,a
        call    text_addr
        ld      a,(hl)
        cp      ' '
        ld      b,d
        jr      z,insert_shift
        call    line_place
        ld      bc,1 - LONGEST
        add     hl,bc
        pop     hl
        jp      c,bell
        push    hl
        ld      a,d
        cp      23
        jr      c,grow1
        call    scroll_up
        pop     de
        dec     d
        ld      (CURCOL),de
        push    de
        ld      d,22
grow1:  push    de
        call    open_next
        pop     de
        inc     d
        ld      a,d
        call    joined_flag
        ld      (hl),1
        ld      b,d
insert_shift:
        pop     de                      ; from the cursor to the end of row B
        ld      c,' '
shift1: call    swap_char
        call    next_cell
        ld      a,b
        cp      d
        jr      nc,shift1
        ret

; The character to the left goes, and the cursor takes its place. Nothing at the beginning of a line.
edit_rubout:
        ld      a,e
        or      a
        jr      nz,rubout1
        ld      a,d
        call    joined_flag
        ld      a,(hl)
        or      a
        ret     z
rubout1: ld     a,8
        call    con_out

; The character at the cursor goes, the rest of the line moves up.
edit_delete:
        ld      de,(CURCOL)
        call    line_end
        ld      a,(WIDTH)
        ld      e,a
        ld      c,' '
        ld      hl,(CURCOL)
delete1: dec    e                       ; backwards from the last cell of row D
        jp      p,delete2
        ld      a,(WIDTH)
        dec     a
        ld      e,a
        dec     d
delete2: call   swap_char
        ld      hl,(CURCOL)
        or      a
        sbc     hl,de
        jr      nz,delete1
        ret

; Exchanges the character in cell DE for C, drawing it if it is another one. Changes AF, HL.
swap_char:
        call    text_addr
        ld      a,(hl)
        cp      c
        ret     z
        push    bc
        push    de
        ld      b,a
        ld      a,c
        push    bc
        call    store_char
        pop     af                      ; the one that was there
        pop     de
        pop     bc
        ld      c,a
        ret

; Enter and the break keys, from edit_loop, whose address is on the stack.
edit_break:
        ld      a,1
        jr      enter1
edit_enter:
        xor     a
enter1: pop     hl
        push    af
        call    line_end
        ld      b,d
        call    line_start
        ld      e,0
        ld      hl,(LINECOL)
        ld      a,h
        cp      d
        jr      c,enter2
        ld      a,b
        cp      h
        jr      c,enter2
        ex      de,hl
enter2: ld      hl,LINEBUF              ; row D, column E to the end of row B
        ld      c,LONGEST
enter3: push    hl
        call    text_addr
        ld      a,(hl)
        pop     hl
        ld      (hl),a
        inc     hl
        dec     c
        jr      z,enter4
        call    next_cell
        ld      a,b
        cp      d
        jr      nc,enter3
enter4: dec     hl                      ; trailing blanks
        ld      a,(hl)
        cp      ' '
        jr      nz,enter5
        ld      a,l
        or      a
        jr      nz,enter4
        dec     hl                      ; LINEBUF begins a page
enter5: inc     hl
        ld      (hl),0
        ld      d,b
        ld      a,b
        call    joined_flag             ; a blank row to which a full one has led is the row below already
        ld      a,(hl)
        or      a
        jr      z,enter7
        ld      e,0
        call    text_addr
        ld      b,64
        ld      a,' '
enter6: cp      (hl)
        jr      nz,enter7
        inc     hl
        djnz    enter6
        dec     d
enter7: ld      (CURCOL),de
        xor     a
        ld      (WRAPPED),a
        call    new_line
        pop     af
        or      a
        ret     z
        xor     a
        ld      (LINEBUF),a
        scf
        ret

; D = first, last row of the logical line of row D. Changes AF, HL.
line_start:
        ld      a,d
        call    joined_flag
        ld      a,(hl)
        or      a
        ret     z
        dec     d
        jr      line_start
line_end:
        ld      a,d
        inc     a
        call    joined_flag
        ld      a,(hl)
        or      a
        ret     z
        inc     d
        jr      line_end

; HL = place of the cell DE in its logical line, from 0; behind the place where con_line was called, from there.
; Changes AF, BC.
line_place:
        push    de
        ld      c,d
        call    line_start
        ld      hl,(LINECOL)            ; H = row, L = column
        ld      a,h
        cp      d
        jr      c,place1
        ld      a,c
        cp      h
        jr      c,place1
        jr      nz,place2
        ld      a,e
        cp      l
        jr      nc,place2
place1: ld      h,d                     ; from the beginning of the line
        ld      l,0
place2: ld      a,c                     ; B rows and from column L to E
        sub     h
        ld      b,a
        ld      d,0
        ld      a,l
        ld      h,d
        ld      l,e
        ld      e,a
        sbc     hl,de                   ; CF is 0
        inc     b
        ld      a,(WIDTH)
        ld      e,a
        jr      place4
place3: add     hl,de
place4: djnz    place3
        pop     de
        ret

; DE to the cell behind. Changes AF.
next_cell:
        inc     e
        ld      a,(WIDTH)
        cp      e
        ret     nz
        ld      e,0
        inc     d
        ret
