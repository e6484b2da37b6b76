; A typed line into tokens.
        .include "memory.inc"
        .include "basic.inc"
        .globl  tokenise
        .section .ext,"x"

; The text at HL, ended by 0, to TOKENBUF + 3; a 0 behind it for the end of the line, another for the end of a
; direct line. E = length from TOKENBUF to the first 0. A line too long is an error. Changes everything.
tokenise:
        ld      de,TOKENBUF + 3
        push    hl
        ld      hl,(PROGSTART)          ; does the program begin with OPTION CRUNCH?
        ld      a,(hl)
        or      a
        jr      z,crunch2
        inc     hl
        inc     hl
        inc     hl
        ld      a,(hl)
        cp      TK_OPTION
        jr      nz,crunch1
        inc     hl
        inc     hl
        ld      a,(hl)
        cp      'C'
crunch1:
        ld      a,0
        jr      nz,crunch2
        inc     a
crunch2:
        ld      (CRUNCH),a
        pop     hl
        xor     a
        ld      (LINEREFS),a
token1: ld      a,(hl)                  ; blanks in front are kept
        cp      ' '
        jr      nz,token2
        inc     hl
        call    put
        jr      token1
token_blank:
        inc     hl
token2: ld      a,(hl)
        or      a
        jr      z,token_end
        cp      ' '
        jr      z,token_blank
        cp      '"'
        jp      z,token_text
        cp      '.'
        jp      z,token_number
        call    is_digit
        jp      c,token_number
        cp      '&'
        jp      z,token_hex
        cp      '?'
        jr      z,token_print
        call    keyword
        jr      c,token_two
        call    upper
        call    is_letter
        jp      c,token_name
        inc     hl
        or      a
        jp      p,token3
        ld      a,0x7F                  ; a letter that names can't have
token3: cp      ','                     ; a list of line numbers goes on
        call    nz,no_lines
        call    put
        jr      token2
token_end:
        call    put
        push    de
        call    put
        pop     de
        ret

; Keyword A; =< => >< are <= >= <>.
token_two:
        ld      c,a
        ld      a,(hl)
        sub     '<'
        jr      z,two1
        sub     '>' - '<'
        jr      nz,two3
        inc     a                       ; 0 for <, 1 for >
two1:   ld      b,a
        ld      a,c
        cp      TK_EQ
        ld      a,TK_LE
        jr      z,two2
        ld      a,c
        cp      TK_GT
        jr      nz,two3
        bit     0,b
        jr      nz,two3
        ld      a,TK_NE
two2:   add     a,b
        ld      c,a
        inc     hl
two3:   ld      a,c
        jr      token_word

; Keyword A. GOTO to THEN, and a minus among line numbers: numbers that follow are lines.
token_print:
        ld      a,TK_PRINT
        inc     hl
token_word:
        call    put
        cp      TK_DATA
        jr      z,token_data
        cp      TK_REM
        jr      z,token_rem
        cp      TK_QUOTE
        jr      z,token_rest
        cp      TK_MINUS
        jp      z,token2
        cp      TK_OPTION
        jr      nz,word1
        ld      a,0                     ; what is behind may look like keywords
        ld      (CRUNCH),a
word1:  cp      TK_AUTO + 1
        jr      nc,word2
        cp      TK_RESUME
        jr      nc,word3
word2:  cp      TK_GOTO
        call    c,no_lines
        jp      c,token2
        cp      TK_THEN + 1
        call    nc,no_lines
        jp      nc,token2
word3:  ld      a,1
        ld      (LINEREFS),a
        jp      token2

token_rem:
        ld      a,(hl)
        cp      ' '
        jr      nz,token_rest
        inc     hl
token_rest:
        ld      a,(hl)
        or      a
        jr      z,token_end
        inc     hl
        call    put
        jr      token_rest

; DATA up to a colon outside quotes. C: quotes so far.
token_data:
        ld      c,0
data1:  ld      a,(hl)
        cp      ' '
        jr      nz,data2
        inc     hl
        jr      data1
data2:  ld      a,(hl)
        or      a
        jp      z,token2
        cp      '"'
        jr      nz,data3
        inc     c
data3:  cp      ':'
        jr      nz,data4
        bit     0,c
        jp      z,token2
data4:  inc     hl
        call    put
        jr      data2

; Text constant; two quotes are one in it.
token_text:
        call    no_lines
        ld      a,TK_TEXT
        call    put
        push    de                      ; length comes here
        call    put
text1:  inc     hl
        ld      a,(hl)
        or      a
        jr      z,text3
        cp      '"'
        jr      nz,text2
        inc     hl
        ld      a,(hl)
        cp      '"'
        jr      nz,text3
text2:  call    put
        jr      text1
text3:  ex      (sp),hl
        ld      a,e
        sub     l
        dec     a
        ld      (hl),a
        pop     hl
        jp      token2

token_number:
        ld      a,(LINEREFS)
        or      a
        jr      z,number1
        ld      a,(hl)
        cp      '.'
        jr      z,number1
        push    de
        sys     decimal
        ld      b,d
        ld      c,e
        pop     de
        jr      c,token_bad
        ld      a,TK_LINE
        call    put
        jr      number3
number1:
        push    de
        sys     fp_parse
        pop     de
        jr      c,token_other
        ld      bc,(FACC + 1)
        ld      a,(FACC)
        or      a
        jr      nz,number4
        ld      a,b
        or      a
        jr      nz,number2
        ld      a,c
        cp      11
        jr      nc,number2
        add     a,TK_SMALL
        call    put
        jp      token2
number2:
        ld      a,TK_INT
        call    put
number3:
        ld      a,c
        call    put
        ld      a,b
        call    put
        jp      token2
number4:
        ld      a,TK_NUM
        call    put
        push    hl
        ld      hl,FACC
        ld      b,6
number5:
        ld      a,(hl)
        inc     hl
        call    put
        djnz    number5
        pop     hl
        jp      token2
token_bad:
        sys     raise_syntax
; A character that is nothing: an error when it is executed.
token_other:
        ld      a,(hl)
        inc     hl
        call    put
        jp      token2

; & and hexadecimal digits.
token_hex:
        call    no_lines
        push    de
        ld      de,0
        inc     hl
        ld      a,(hl)
        and     0xDF
        cp      'H'                     ; &H is & too
        jr      nz,hex1
        inc     hl
hex1:   ld      a,(hl)
        call    upper
        call    is_digit
        jr      c,hex2
        sub     7
        cp      0x3A
        jr      c,hex3
        cp      0x40
        jr      nc,hex3
hex2:   and     15
        ex      de,hl
        add     hl,hl
        add     hl,hl
        add     hl,hl
        add     hl,hl
        add     a,l
        ld      l,a
        ex      de,hl
        inc     hl
        jr      hex1
hex3:   ld      b,d
        ld      c,e
        pop     de
        ld      a,TK_HEX
        call    put
        jr      number3

; A name: letter, letters, digits and points, then $ or % and bracket; ! and # are dropped.
token_name:
        call    no_lines
        ld      c,TK_VNUM
        push    hl
name1:  inc     hl
        ld      a,(hl)
        cp      '.'
        jr      z,name1
        call    upper
        call    is_digit
        jr      c,name1
        call    is_letter
        jr      nc,name0
        ld      a,(CRUNCH)
        or      a
        jr      z,name1
        push    hl
        push    bc
        call    keyword
        pop     bc
        pop     hl
        jr      nc,name1
        xor     a
name0:  ld      b,l                     ; end of the letters
        cp      '!'
        jr      z,name6
        cp      '#'
        jr      z,name6
        inc     hl
        cp      '$'
        jr      z,name7
        ld      c,TK_VINT
        cp      '%'
        jr      z,name2
        dec     hl
        ld      c,TK_VNUM
        jr      name2
name7:  inc     c
        jr      name2
name6:  inc     hl
name2:  push    hl
        dec     hl
name3:  inc     hl
        ld      a,(hl)
        cp      ' '
        jr      z,name3
        cp      '('
        jr      nz,name4
        inc     c                       ; TK_VINT is next to TK_AINT, the others two away
        bit     3,c
        jr      nz,name8
        inc     c
name8:
        pop     af
        inc     hl
        push    hl
name4:  pop     hl
        ex      (sp),hl                 ; HL = start, stack: where the line goes on
        ld      a,c
        call    put
name5:  ld      a,(hl)
        inc     hl
        call    upper
        call    put
        ld      a,l
        cp      b
        jr      nz,name5
        ex      de,hl
        dec     hl
        set     7,(hl)
        inc     hl
        ex      de,hl
        pop     hl
        jp      token2

; Keyword at HL, the longest that fits: CF = 1, A = token, HL behind it. Otherwise CF = 0. Keeps DE. Changes BC.
keyword:
        push    de
        xor     a
        ld      (KEYTOKEN),a
        ld      de,keywords
        ld      c,0x80
keyword1:
        push    hl
keyword2:
        ld      a,(hl)
        inc     hl
        call    upper
        ld      b,a
        ld      a,(de)
        inc     de
        xor     b
        jr      z,keyword2
        cp      0x80
        jr      z,keyword_end
        dec     de
keyword3:
        ld      a,(de)
        inc     de
        add     a,a
        jr      nc,keyword3
keyword4:
        pop     hl
        inc     c
        jr      z,keyword5
        ld      a,(de)
        or      a
        jr      nz,keyword1
keyword5:
        pop     de
        ld      a,(KEYTOKEN)
        or      a
        ld      a,(hl)
        ret     z
        ld      a,(KEYTOKEN)
        ld      hl,(KEYEND)
        scf
        ret
; All its characters are there, B the last. A word must end here, except that a number may follow some, a name FN,
; anything REM, or all words but three when names end at keywords.
keyword_end:
        ld      a,b
        call    is_letter
        jr      nc,keyword_yes
        ld      a,c
        cp      TK_REM
        jr      z,keyword_yes
        cp      TK_FN
        jr      z,keyword_yes
        ld      a,(CRUNCH)
        or      a
        ld      a,c
        jr      z,keyword6
        cp      TK_PI
        jr      z,keyword6
        cp      TK_IN
        jr      z,keyword6
        cp      TK_TIME
        jr      nz,keyword_yes
keyword6:
        ld      a,(hl)
        call    upper
        call    is_letter
        jr      c,keyword4
        cp      '$'
        jr      z,keyword4
        cp      '%'
        jr      z,keyword4
        call    is_digit
        jr      nc,keyword_yes
        ld      a,c
        cp      TK_GOTO
        jr      c,keyword4
        cp      TK_STEP + 1
        jr      nc,keyword4
keyword_yes:
        ld      a,(KEYTOKEN)
        or      a
        jr      z,keyword7
        push    de
        ld      de,(KEYEND)
        or      a
        sbc     hl,de
        add     hl,de
        pop     de
        jr      c,keyword4
        jr      z,keyword4
keyword7:
        ld      (KEYEND),hl
        ld      a,c
        ld      (KEYTOKEN),a
        jr      keyword4

; A to the line of tokens. Keeps everything but DE.
put:    ld      (de),a
        inc     e
        ret     nz
        sys     raise_long

; Numbers that follow are no line numbers. Keeps everything, flags too.
no_lines:
        push    hl
        ld      hl,LINEREFS
        ld      (hl),0
        pop     hl
        ret

; A as a capital letter. Changes F.
upper:  cp      'a'
        ret     c
        cp      'z' + 1
        ret     nc
        sub     'a' - 'A'
        ret

; CF = 1 when A is a digit, a capital letter. Keep A.
is_digit:
        cp      '0'
        ccf
        ret     nc
        cp      '9' + 1
        ret
is_letter:
        cp      'A'
        ccf
        ret     nc
        cp      'Z' + 1
        ret
