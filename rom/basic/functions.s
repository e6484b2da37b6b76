; Functions.
;
; Those from LEN on are entered with their value in FACC or SLEN, SADDR and leave the result there; DE may be
; changed. Those before take their arguments themselves, B of the expression being on the stack, and end at
; function_num or function_str.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  functions, parse_signed
        .text

function_num:
        pop     bc
        jp      eval_done
function_str:
        pop     bc
        jp      eval_text

fn_not: ld      b,TK_LE
        call    eval_value
        jr      nc,fn_type
        call    facc_int
        ld      a,h
        cpl
        ld      h,a
        ld      a,l
        cpl
        ld      l,a
        call    fp_fromint
        jr      function_num
fn_type:
        jp      type_error

fn_pi:  ld      a,TK_PI
        call    word_value
        push    de
        call    fp_pi
        jr      number_de

; RND: 0 <= x < 1. RND(n): n > 1 a whole number 1 to n, n < 0 starts the sequence that belongs to it.
fn_rnd: call    opt_arg
        jr      c,rnd1
        dec     de
        ld      a,(de)
        inc     de
        cp      ')'                     ; a string in brackets
        jr      z,fn_type
rnd1:   push    de
        jr      nc,rnd2
        call    fp_sign
        jp      m,rnd_seed
        ld      hl,one
        call    fp_cmp                  ; CF = 1: 1 < n
        jr      nc,rnd2
        ld      hl,NUMTEMP
        call    num_store
        call    fp_rnd
        ld      hl,NUMTEMP
        call    fp_mul
        call    fp_int
        ld      hl,one
        call    fp_add
        jr      number_de
rnd_seed:
        ld      hl,RNDSEED
        call    num_store
rnd2:   call    fp_rnd
number_de:
        pop     de
        jr      function_num
one:    .byte   0, 1, 0, 0, 0, 0

; FRE: free bytes between variables and strings.
fn_fre: call    opt_arg
        call    collect
        push    de
        ld      hl,(HEAPLOW)
        ld      de,(VAREND)
        or      a
        sbc     hl,de
        call    fp_fromuint
        jr      number_de

; POS: column of the cursor, from 0.
fn_pos: call    opt_arg
        call    con_column
        call    set_byte
        jp      function_num

; TIME: units of 20 ms since the start.
fn_time:
        ld      a,TK_TIME
        call    word_value
        push    de
        di
        ld      hl,(TICKS)
        ld      de,(TICKS + 2)
        ei
        call    fp_fromlong
        jr      number_de

; INKEY$: the key pressed next, or nothing. The break keys are left to the break.
fn_inkey:
        xor     a
        ld      (SLEN),a
        ld      a,(BREAKKEY)
        or      a
        jp      nz,function_str
        call    key_poll
        call    nz,char_text
        jp      function_str

; POINT(x, y): colour, -1 outside.
fn_point:
        expect  '('
        call    point_arg
        expect  ')'
        push    de
        ex      de,hl
        ext     gfx_point
        pop     de
        ld      l,a
        ld      h,0
        inc     a
        jr      nz,point1
        dec     h
point1: call    fp_fromint
        jp      function_num

; LEFT$(string, number), RIGHT$(string, number), MID$(string, from [, number]): a part of the string, not
; copied. From here on A = length, HL = address, B = characters to leave out, C = characters to take.
fn_left:
        call    part_arg
        ld      b,0
        ld      c,a
        expect  ')'
        call    str_pop
part:   sub     b
        jr      nc,part1
        xor     a
part1:  cp      c
        jr      c,part2
        ld      a,c
part2:  ld      (SLEN),a
        ld      c,b
        ld      b,0
        add     hl,bc
        ld      (SADDR),hl
        jp      function_str
fn_right:
        call    part_arg
        ld      c,a
        expect  ')'
        call    str_pop
        ld      b,a
        sub     c
        jr      nc,right1
        xor     a
right1: push    bc
        ld      b,a
        pop     af
        jr      part
fn_mid: call    part_arg
        ld      b,a
        ld      c,255
        dec     b
        or      a
        jp      z,bad_value
        ld      a,(de)
        cp      ','
        jr      nz,mid1
        inc     de
        push    bc
        call    eval_byte
        pop     bc
        ld      c,a
mid1:   expect  ')'
        call    str_pop
        jr      part
part_arg:
        expect  '('
        call    eval_str
        call    str_push
        expect  ','
        jp      eval_byte

fn_asc: ld      a,(SLEN)
        or      a
        jp      z,bad_value
        ld      hl,(SADDR)
        ld      a,(hl)
        jr      set_byte
fn_peek:
        call    facc_int
        ld      a,(hl)
        jr      set_byte
fn_in:  call    facc_int
        ld      a,h
        or      a
        jp      nz,bad_value
        ld      c,l
        in      a,(c)
        jr      set_byte
fn_len: ld      a,(SLEN)
; FACC = A. Keeps A, BC, DE.
set_byte:
        ld      l,a
        ld      h,0
        jp      fp_fromint

; VAL: the number that the string begins with, else 0.
fn_val: call    str_buffer
        call    parse_signed
        ret     nc
        xor     a
        jr      set_byte

; A number at HL, with blanks and a sign in front: FACC, HL behind it; CF = 1 when there is none. Changes all.
parse_signed:
        ld      a,(hl)
        inc     hl
        cp      ' '
        jr      z,parse_signed
        cp      '+'
        jp      z,fp_parse
        cp      '-'
        dec     hl
        jp      nz,fp_parse
        inc     hl
        call    fp_parse
        ret     c
        push    hl
        call    fp_neg
        pop     hl
        or      a
        ret

fn_chr: call    facc_int
        ld      a,h
        or      a
        jp      nz,bad_value
        ld      a,l
; The string value = character A.
char_text:
        ld      hl,TEXTBUF
        ld      (hl),a
        ld      a,1
        jp      str_take

fn_str: call    fp_print
; The string value = a copy of the text at HL, ended by 0.
text_value:
        push    hl
        ld      b,-1
text1:  inc     b
        ld      a,(hl)
        inc     hl
        or      a
        jr      nz,text1
        pop     hl
        ld      a,b
        jp      str_take

; HEX$: without leading zeros; negative numbers as 16 bits.
fn_hex: call    facc_int
        ex      de,hl
        ld      hl,TEXTBUF
        ld      a,d
        call    hex_byte
        ld      a,e
        call    hex_byte
        ld      (hl),0
        ld      hl,TEXTBUF
        ld      b,3
hex1:   ld      a,(hl)
        cp      '0'
        jr      nz,text_value
        inc     hl
        djnz    hex1
        jr      text_value
hex_byte:
        push    af
        rrca
        rrca
        rrca
        rrca
        call    hex_digit
        pop     af
; The digit of A's low half to (HL), HL behind it.
hex_digit:
        and     15
        cp      10
        jr      c,digit1
        add     a,'A' - '0' - 10
digit1: add     a,'0'
        ld      (hl),a
        inc     hl
        ret

; In the order of the tokens from NOT on.
functions:
        .word   fn_not, fn_pi, fn_rnd, fn_fre, fn_pos, fn_time, fn_inkey, fn_point
        .word   fn_left, fn_right, fn_mid
        .word   fn_len, fn_asc, fn_val
        .word   fn_peek, fn_in, fp_abs, fp_int, fp_sgn, fp_sqr, fp_sin, fp_cos
        .word   fp_tan, fp_atn, fp_exp, fp_log
        .word   fn_chr, fn_str, fn_hex
