; LIST, in the extension ROM.
        .include "memory.inc"
        .include "basic.inc"
        .globl  list_program, list_length
        .section .ext,"x"

        .equ    LONGEST, 250            ; characters that the editor takes
        .equ    MOSTDIGITS, 14

; Error if LIST would show the line in TOKENBUF with more characters than the editor takes. Changes everything.
list_length:
        ld      a,LONGEST + 1
        ld      (LISTROOM),a
        ld      hl,(TOKENBUF + 1)
        call    out_number
        ld      a,' '
        call    out
        ld      de,TOKENBUF + 3
        call    list_line
        xor     a
        ld      (LISTROOM),a
        ret

; Lists the lines from RANGELOW to RANGEHIGH, until a break key. Changes everything.
list_program:
        xor     a
        ld      (LISTROOM),a
        ld      de,(RANGELOW)
        sys     find_line
list1:  ld      a,(BREAKKEY)
        or      a
        ret     nz
        ld      a,(hl)
        or      a
        ret     z
        ld      e,a
        ld      d,0
        push    hl
        add     hl,de
        ex      (sp),hl                 ; stack: next line
        inc     hl
        ld      e,(hl)
        inc     hl
        ld      d,(hl)
        inc     hl
        push    hl
        ld      hl,(RANGEHIGH)
        or      a
        sbc     hl,de
        jr      c,list_end
        ex      de,hl
        sys     con_number
        ld      a,' '
        rst     RST_OUT
        pop     de
        ld      a,' '
        ld      (LASTCHAR),a
        call    list_line
        ld      a,13
        rst     RST_OUT
        pop     hl
        jr      list1
list_end:
        pop     hl
        pop     hl
        ret

; The tokens at DE, up to the 0. Changes everything.
list_line:
        ld      a,(de)
        inc     de
        or      a
        ret     z
        jp      m,list_word
        cp      TK_SMALL
        jr      c,list_marker
        cp      ' '
        jr      nc,list_sign
        sub     TK_SMALL
        ld      c,a
        ld      b,0
        jr      list_integer
list_sign:
        cp      ' '
        jr      z,sign1
        cp      ':'                     ; no blank is due in front of these
        jr      z,sign1
        cp      ','
        jr      z,sign1
        cp      ';'
        call    nz,blank_due
sign1:  call    out
        jr      list_line

list_marker:
        cp      TK_TEXT
        jp      z,list_text
        jp      c,list_name
        cp      TK_VINT
        jp      nc,list_name
        push    af
        cp      TK_NUM
        jr      z,list_number
        pop     af
        ex      de,hl
        ld      c,(hl)
        inc     hl
        ld      b,(hl)
        inc     hl
        ex      de,hl
        cp      TK_HEX
        jr      z,list_hex
list_integer:
        call    blank_between
        push    de
        ld      h,b
        ld      l,c
        call    out_number
        pop     de
digit_last:
        ld      a,'0'
        ld      (LASTCHAR),a
        jr      list_line
list_number:
        pop     af
        call    blank_between
; As few digits, but ten at least, as bring the same number back. The largest numbers are not tried, as rounded
; up they could be too large.
        ld      c,10
        ld      a,(de)
        cp      254
        jr      c,number1
        ld      c,MOSTDIGITS
number1:
        ld      hl,FACC
        ld      b,6
        push    de
number2:
        ld      a,(de)
        inc     de
        ld      (hl),a
        inc     hl
        djnz    number2
        push    bc
        ld      a,c
        sys     fp_digits
        pop     bc
        pop     de
        ld      a,c
        cp      MOSTDIGITS
        jr      nc,number5
        push    bc
        push    de
        sys     fp_parse
        pop     de
        pop     bc
        push    de
        ld      hl,FACC
        ld      b,6
number3:
        ld      a,(de)
        cp      (hl)
        jr      nz,number4
        inc     de
        inc     hl
        djnz    number3
number4:
        pop     de
        jr      z,number5
        inc     c
        jr      number1
number5:
        ld      hl,6
        add     hl,de
        push    hl
        call    out_text
        pop     de
        jr      digit_last
list_hex:
        call    blank_due
        ld      a,'&'
        call    out
        ld      a,b
        or      a
        call    nz,out_hex
        ld      a,c
        call    out_hex
        jr      digit_last

list_text:
        call    blank_between
        ld      a,'"'
        call    out
        ld      a,(de)
        inc     de
        ld      b,a
        inc     b
        jr      text2
text1:  ld      a,(de)
        inc     de
        call    out
        cp      '"'
        call    z,out                   ; one in the text is written twice
text2:  djnz    text1
        ld      a,'"'
        call    out
        jp      list_line

; A = marker of a variable.
list_name:
        ld      c,a
        call    blank_between
name1:  ld      a,(de)
        inc     de
        ld      b,a
        and     0x7F
        call    out
        bit     7,b
        jr      z,name1
        ld      a,c
        cp      TK_VINT
        ld      b,'%'
        jr      nc,name2
        bit     0,c                     ; TK_VSTR, TK_ASTR are even
        ld      b,'$'
        jr      nz,name3
name2:  ld      a,b
        call    out
name3:  ld      a,c
        cp      TK_VINT
        jp      z,list_line
        cp      TK_ANUM
        ld      a,'('
        call    nc,out
        jp      list_line

; Keyword A.
list_word:
        ld      c,a
        cp      TK_PLUS                 ; words between blanks: statements to STEP, NOT, OR, AND, MOD, XOR
        jr      nc,word1
        cp      TK_LE
        jr      nc,word_sign
        cp      TK_OR
        jr      nc,word_blank
        cp      TK_NOT
        jr      z,word_blank
        cp      TK_TAB
        jr      c,word_blank
        call    blank_between
        jr      word2
word1:  cp      TK_MOD
        jr      z,word_blank
        cp      TK_XOR
        jr      z,word_blank
        jr      nc,word_sign
        cp      TK_DEF
        jr      c,word_sign
        cp      TK_FN
        jr      c,word_blank
        call    blank_between
        call    out_word
        ld      a,c
        cp      TK_FN
        jp      nz,list_line
        ld      a,'('                   ; its name follows at once
        ld      (LASTCHAR),a
        jp      list_line
word_sign:
        call    blank_due
word2:  call    out_word
        jp      list_line
word_blank:
        ld      a,(LASTCHAR)
        cp      ':'
        jr      z,word3
        cp      '('
        jr      z,word3
        cp      ' '
        ld      a,' '
        call    nz,out
word3:  call    out_word
        ld      a,c
        cp      TK_QUOTE
        jr      z,list_rest
        cp      TK_REM
        jr      z,word_rest
        cp      TK_DATA
        jr      z,word_rest
        xor     a
        ld      (LASTCHAR),a
        jp      list_line
word_rest:
        ld      a,(de)
        or      a
        ld      a,' '
        call    nz,out
; Text without tokens.
list_rest:
        push    de
        dec     de
        sys     skip_token
        pop     hl
rest1:  or      a
        sbc     hl,de
        add     hl,de
        jp      z,list_line
        ld      a,(hl)
        inc     hl
        call    out
        jr      rest1

; HL as a number, FTEXT: to the screen. Change everything.
out_number:
        sys     fp_fromuint
        sys     fp_print
out_text:
        ld      hl,FTEXT
text3:  ld      a,(hl)
        inc     hl
        or      a
        ret     z
        call    out
        jr      text3

; Character A to the screen, or just counted. Keeps A.
out:    ld      (LASTCHAR),a
        push    af
        ld      a,(LISTROOM)
        or      a
        jr      nz,out_count
        pop     af
        push    af
        rst     RST_OUT
        pop     af
        ret
out_count:
        dec     a
        ld      (LISTROOM),a
        jr      z,out_long
        pop     af
        ret
out_long:
        sys     raise_long

; A blank if the last character was a letter, digit or quote, or if one is due. Keeps all but F.
blank_between:
        push    af
        ld      a,(LASTCHAR)
        or      a
        jr      z,between1
        cp      '"'
        jr      z,between1
        cp      '0'
        jr      c,between2
        cp      '9' + 1
        jr      c,between1
        cp      'A'
        jr      c,between2
        cp      'Z' + 1
        jr      nc,between2
between1:
        ld      a,' '
        call    out
between2:
        pop     af
        ret
; A blank if one is due after a keyword. Keeps all but F.
blank_due:
        push    af
        ld      a,(LASTCHAR)
        or      a
        jr      z,between1
        pop     af
        ret

; A as two hexadecimal digits. Changes AF.
out_hex:
        push    af
        rrca
        rrca
        rrca
        rrca
        call    out_digit
        pop     af
out_digit:
        and     15
        add     a,'0'
        cp      '9' + 1
        jr      c,out
        add     a,'A' - '9' - 1
        jr      out

; Prints the name of token C. Changes A, B, HL.
out_word:
        ld      hl,keywords
        ld      a,c
        sub     0x80
        jr      z,out_name
        ld      b,a
out1:   ld      a,(hl)
        inc     hl
        add     a,a
        jr      nc,out1
        djnz    out1
out_name:
        ld      a,(hl)
        and     0x7F
        call    out
        bit     7,(hl)
        inc     hl
        jr      z,out_name
        ret
