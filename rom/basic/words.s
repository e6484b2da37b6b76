; Later functions and statements: what of them stands in the system ROM.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  functions2, st_randomize, st_swap, st_erase, st_mid, st_auto, fp_fix
        .text

; RANDOMIZE [number]: the clock's without one.
st_randomize:
        call    at_end
        jr      z,randomize1
        call    eval_num
        jr      randomize2
randomize1:
        push    de
        ld      hl,(TICKS)
        ld      d,l
        ld      e,h
        call    fp_fromlong
        pop     de
randomize2:
        ld      hl,RNDSEED
        jp      num_store

; ERASE array, ...
st_erase:
        ld      a,(de)
        inc     de
        ld      c,TK_AINT
        cp      TK_VINT
        jr      z,erase1
        ld      c,a
        inc     c
        inc     c
        dec     a
        cp      2
        jp      nc,syntax_error
erase1: call    find_var
        jp      c,bad_value
        ext     erase_array
        ld      a,(de)
        cp      ','
        ret     nz
        inc     de
        jr      st_erase

st_swap:
        ext     swap
        ret
st_mid: ext     mid_take
        ret

; AUTO [line [, step]]
st_auto:
        ld      hl,10
        ld      (AUTOLINE),hl
        call    at_end
        jr      z,auto1
        call    line_number
        ld      (AUTOLINE),hl
        ld      hl,10
        ld      a,(de)
        cp      ','
        jr      nz,auto1
        inc     de
        call    line_number
auto1:  call    must_end
        ld      (AUTOSTEP),hl
        jp      ready

; FACC without its fraction. Changes AF, BC, DE, HL.
fp_fix: call    fp_sign
        jp      p,fp_int
        call    fp_neg
        call    fp_int
        jp      fp_neg

; The functions; each ends at eval_done or eval_text with B of the expression, which is on the stack.
fn_timer:
        push    de
        di
        ld      hl,(TICKS)
        ld      de,(TICKS + 2)
        ei
        call    fp_fromlong
        ld      hl,NUMTEMP
        call    num_store
        ld      hl,50
        call    fp_fromint
        ld      hl,NUMTEMP
        call    fp_div
        pop     de
num_end:
        pop     bc
        jp      eval_done
fn_err: ld      a,(ERRNUMBER)
        jr      byte_end
fn_csrlin:
        ld      a,(CURROW)
byte_end:
        ld      l,a
        ld      h,0
        jr      word_end
fn_erl: ld      hl,(ERRLINENO)
word_end:
        push    de
        call    fp_fromuint
        pop     de
        jr      num_end
fn_fix: ld      b,0xFF
        call    eval_value
        jp      nc,type_error
        push    de
        call    fp_fix
        pop     de
        jr      num_end
fn_instr:
        expect  '('
        call    eval
        ld      a,1
        jr      nc,instr1
        call    facc_int
        ld      a,h
        or      a
        ld      a,l
        jp      nz,bad_value
        or      a
        jp      z,bad_value
        push    af
        expect  ','
        call    eval_str
        pop     af
instr1: push    af
        call    str_push
        expect  ','
        call    eval_str
        expect  ')'
        pop     af
        ext     find_text
        jr      byte_end
fn_string:
        expect  '('
        call    eval_byte
        push    af
        expect  ','
        call    eval
        jr      nc,string1
        call    facc_int
        ld      a,h
        or      a
        jp      nz,bad_value
        ld      c,l
        jr      string2
string1:
        ld      a,(SLEN)
        or      a
        jp      z,bad_value
        ld      hl,(SADDR)
        ld      c,(hl)
string2:
        expect  ')'
        pop     af
        jr      string3
fn_space:
        ld      b,0xFF
        call    eval_value
        jp      nc,type_error
        call    facc_int
        ld      a,h
        or      a
        jp      nz,bad_value
        ld      a,l
        ld      c,' '
; A characters C.
string3:
        ld      b,a
        ld      hl,TEXTBUF
        inc     b
        jr      string5
string4:
        ld      (hl),c
        inc     hl
string5:
        djnz    string4
text_end:
        ld      hl,TEXTBUF
        call    str_take
        pop     bc
        jp      eval_text
fn_time:
        ext     clock_text
        ld      a,8
        jr      text_end
fn_ucase:
        ld      c,0
        jr      case1
fn_lcase:
        ld      c,1
case1:  push    bc
        ld      b,0xFF
        call    eval_value
        jp      c,type_error
        call    str_buffer
        pop     bc
        ext     change_case
        ld      a,(SLEN)
        jr      text_end
fn_input:
        expect  '('
        call    eval_byte
        ld      b,a
        expect  ')'
        ld      a,b
        push    af
        ld      hl,TEXTBUF
        inc     b
        jr      input3
input1: ei
        halt
input2: ld      a,(BREAKKEY)
        or      a
        jr      nz,input_stop
        call    key_poll
        jr      z,input1
        ld      (hl),a
        inc     hl
input3: djnz    input2
        pop     af
        jr      text_end
input_stop:
        ld      de,(STATEMENT)
        call    break_at
        raise   E_BREAK

; In the order of the tokens from FN on.
functions2:
        .word   fn_fn, fn_string, fn_input, fn_timer, fn_time, fn_instr, fn_err, fn_erl, fn_csrlin
        .word   fn_space, fn_fix, fn_ucase, fn_lcase
