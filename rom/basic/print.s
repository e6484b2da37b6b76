; PRINT, INPUT, READ, RESTORE.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  st_print, st_input, st_read, st_restore, st_lprint, st_llist, st_line
        .globl  screen_out, print_string, new_row, item_overflow
        .text

; PRINT: ; stays, a comma goes to the next column that is a multiple of 16, TAB(column), SPC(number).
st_print:
        call    at_end
        jr      z,print_line
print1: ld      a,(de)
        cp      ';'
        jr      z,print2
        cp      ','
        jr      z,print_zone
        cp      TK_USING
        jp      z,print_using
        sub     TK_TAB
        jr      z,print_tab
        dec     a
        jp      z,print_spc
        call    eval
        jr      c,print_number
        call    print_string
        jr      st_print
print_line:
        ld      a,13
        rst     RST_OUT
        ret
print2: inc     de
print3: call    at_end
        ret     z
        jr      print1

; A number has a blank or minus in front and a blank behind.
print_number:
        push    de
        call    fp_print
        ld      a,(hl)
        cp      '-'
        ld      a,' '
        jr      z,number1
        rst     RST_OUT
number1:
        call    out_str
        ld      a,' '
        rst     RST_OUT
        pop     de
        jr      st_print

; PRINT USING text; values
print_using:
        inc     de
        call    eval_str
        call    str_push
        expect  ';'
        xor     a
        ld      (USINGAT),a
using1: call    at_end
        jr      z,using_end
        cp      ';'
        jr      z,using2
        cp      ','
        jr      z,using2
        call    eval
        sbc     a,a                     ; 255: a number
        push    de
        ext     using_value
        pop     de
        jr      using1
using2: inc     de
        call    at_end
        jr      nz,using1
        scf
using_end:                              ; CF = 1: stay in the row
        push    af
        push    de
        ext     using_rest
        pop     de
        call    str_pop
        pop     af
        ret     c
        jr      print_line

print_zone:
        inc     de
zone1:  ld      a,' '
        rst     RST_OUT
        call    out_column
        and     15
        jr      nz,zone1
        jr      print3

print_tab:
        inc     de
        call    print_arg
        ld      a,(PRINTING)
        or      a
        jr      nz,tab3                 ; the printer's rows have no end
        call    con_width
        ld      b,a
        ld      a,c
tab1:   sub     b
        jr      nc,tab1
        add     a,b
        ld      c,a
tab3:   call    out_column
        ld      b,a
        ld      a,c
        sub     b
        jr      nc,tab2
        call    print_line              ; too late in this row
        ld      a,c
tab2:   ld      c,a
        jr      spaces
print_spc:
        inc     de
        call    print_arg
spaces: inc     c
spaces1:
        dec     c
        jp      z,st_print
        ld      a,' '
        rst     RST_OUT
        jr      spaces1

; C = the number in brackets at DE.
print_arg:
        expect  '('
        call    eval_byte
        ld      c,a
        expect  ')'
        ret

; The text at HL, ended by 0, to the screen or printer. Changes AF, HL.
out_str:
        ld      a,(PRINTING)
        or      a
        jp      z,con_str
out_str1:
        ld      a,(hl)
        inc     hl
        or      a
        ret     z
        rst     RST_OUT
        jr      out_str1

; A = column of screen or printer. Changes F.
out_column:
        ld      a,(PRINTING)
        or      a
        ld      a,(PRINTCOL)
        ret     nz
        jp      con_column

; LPRINT and LLIST: PRINT and LIST with the characters to the printer.
st_lprint:
        call    printer_out
        call    st_print
; Characters to the screen again. Keeps all but AF, HL.
screen_out:
        ld      hl,OUT_SCREEN
        xor     a
        jr      out_to
st_llist:
        call    printer_out
        call    st_list
        jr      screen_out
printer_out:
        ld      hl,OUT_PRINTER
        ld      a,1
out_to: ld      (RST_OUT + 1),hl
        ld      (PRINTING),a
        ret

; The string value to the screen. Keeps DE.
print_string:
        ld      hl,(SADDR)
        ld      a,(SLEN)
        ld      b,a
        or      a
        ret     z
string1:
        ld      a,(hl)
        inc     hl
        rst     RST_OUT
        djnz    string1
        ret

; To the beginning of a row. Changes A.
new_row:
        call    con_column
        or      a
        ret     z
        jp      print_line

; INPUT ["text" ; or ,] variable, ...: with a comma no question mark is printed.
st_input:
        ld      hl,(CURLINE)
        ld      a,h
        or      l
        jr      z,input_direct
        ld      (INPUTTEXT),de
input1: ld      a,(de)
        cp      TK_TEXT
        jr      nz,input2
        call    eval
        call    print_string
        ld      a,(de)
        inc     de
        cp      ','
        jr      z,input3
        cp      ';'
        jr      nz,input_syntax
input2: ld      a,'?'
        rst     RST_OUT
        ld      a,' '
        rst     RST_OUT
input3: push    de
        call    con_part
        pop     de
        jr      c,input_break
        xor     a
        ld      (ITEMEND),a
        ld      hl,LINEBUF
input4: call    item
        jr      c,input_again
        ld      b,(hl)
        inc     hl
        ld      a,(de)
        cp      ','
        jr      nz,input5
        inc     de
        ld      a,b                     ; another one wanted
        or      a
        jr      nz,input4
        ld      hl,LINEBUF              ; Enter alone serves all of them
        ld      a,(hl)
        or      a
        jr      z,input4
        jr      input_again
input5: ld      a,b
        or      a
        ret     z
input_again:
        ld      hl,again
        call    con_str
        ld      de,(INPUTTEXT)
        jr      input1
input_break:
        ld      de,(STATEMENT)
        call    break_at
        raise   E_BREAK
input_direct:
        raise   E_DIRECT
input_syntax:
        jp      syntax_error
again:  .asciz  "Again, please\r"

; LINE INPUT ["text" ; or ,] string variable: all that is typed, without a question mark.
st_line:
        expect  TK_INPUT
        ld      hl,(CURLINE)
        ld      a,h
        or      l
        jr      z,input_direct
        ld      a,(de)
        cp      TK_TEXT
        jr      nz,line1
        call    eval
        call    print_string
        ld      a,(de)
        inc     de
        cp      ','
        jr      z,line1
        cp      ';'
        jr      nz,input_syntax
line1:  push    de
        call    con_part
        pop     de
        jr      c,input_break
        call    lvalue
        or      a
        jp      nz,assign_type
        push    hl
        ld      hl,LINEBUF
        ld      (SADDR),hl
line2:  ld      a,(hl)
        inc     l
        or      a
        jr      nz,line2
        dec     l
        ld      a,l
        ld      (SLEN),a
        pop     hl
        jp      str_assign

; READ variable, ...
st_read:
        ld      a,':'
        ld      (ITEMEND),a
        ld      hl,(DATAPTR)
        ld      a,(hl)
        cp      ','
        jr      z,read3
        ex      de,hl                   ; the next DATA
        push    hl
read1:  ld      a,(de)
        cp      TK_DATA
        jr      z,read2
        call    skip_token
        or      a
        jr      nz,read1
        ld      a,(de)
        inc     de
        inc     de
        inc     de
        or      a
        jr      nz,read1
        raise   E_DATA
read2:  pop     hl
        ex      de,hl
read3:  inc     hl
        call    item
        jr      c,read_bad
        ld      (DATAPTR),hl
        ld      a,(de)
        cp      ','
        ret     nz
        inc     de
        jr      st_read
read_bad:
        jp      type_error

; RESTORE [line]
st_restore:
        ld      hl,(PROGSTART)
        call    at_end
        jr      z,restore1
        call    line_number
        push    de
        call    target
        pop     de
restore1:
        dec     hl
        ld      (DATAPTR),hl
        ret

; The variable at DE gets the item at HL. DE behind the variable, HL at the item's end: a comma, 0 or ITEMEND.
; CF = 1 if it is no number, but ought to be, or if it goes on behind its end.
item:   push    hl
        call    lvalue
        ld      (ITEMKIND),a
        or      a
        ex      (sp),hl                 ; HL = text, stack: address of the value
        jr      z,item_string
        push    de
        ld      a,(ITEMEND)
        or      a
        jr      nz,item_parse
        ld      a,(LINEBUF)
        or      a
        jr      z,item_kept
        ld      (PARSESP),sp            ; an overflow comes back to item_overflow
item_parse:
        call    parse_signed
        jr      c,item_parsed
        ld      a,(ITEMKIND)
        dec     a
        call    nz,facc_round
        or      a
item_parsed:
        ld      de,0
        ld      (PARSESP),de
        pop     de
        jr      c,item_bad
        call    item_end
        jr      nz,item_bad
        ex      (sp),hl
        ld      a,(ITEMKIND)
        call    value_store
        pop     hl
        or      a
        ret
item_kept:                              ; Enter alone: a number stays what it was
        pop     de
        pop     bc
        ret
item_overflow:
        ld      sp,hl
        scf
        jr      item_parsed
item_bad:
        pop     hl
        scf
        ret
item1:  inc     hl
item_string:
        ld      a,(hl)
        cp      ' '
        jr      z,item1
        cp      '"'
        jr      z,item_quoted
        ld      (SADDR),hl
        ld      bc,0                    ; B length, C length without blanks at the end
item2:  ld      a,(hl)
        call    item_ends
        jr      z,item4
        inc     hl
        inc     b
        cp      ' '
        jr      z,item2
        ld      c,b
        jr      item2
item_quoted:
        inc     hl
        ld      (SADDR),hl
        ld      c,0
item3:  ld      a,(hl)
        or      a
        jr      z,item4
        inc     hl
        inc     c
        cp      '"'
        jr      nz,item3
        dec     c
        call    item_end
        jr      nz,item_bad
item4:  ld      a,c
        ld      (SLEN),a
        ex      (sp),hl
        call    str_assign
        pop     hl
        or      a
        ret

; HL behind blanks, Z when an item ends there. Changes A.
item_end:
        ld      a,(hl)
        inc     hl
        cp      ' '
        jr      z,item_end
        dec     hl
; Z when A ends an item. Keeps A.
item_ends:
        or      a
        ret     z
        cp      ','
        ret     z
        push    hl
        ld      hl,ITEMEND
        cp      (hl)
        pop     hl
        ret
