; Variables: found by name, made, arrays, all cleared.
;
; They stand behind the program in the order of their making and never move. A numeric variable of one letter
; is just its 6 bytes, reached through LETTERS. Any other has a head: link to the next one of the same first
; letter (word), marker (TK_VNUM ... TK_ASTR), name; then its value: 6 bytes, or a string's length and address,
; or, of an array, the number of dimensions, the elements of each (words), and the elements, last one fastest.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  clear, find_var, make_var, simple_num, lvalue, st_clear, st_assign, st_let
        .globl  need_memory, memory_error, skip_name, assign_other, value_store, facc_round, word_name, simple_int
        .globl  make_var, assign_type
        .text

; No variables, strings, loops, subroutines; DATA from the start; CONT impossible. Changes all but DE.
clear:  ld      hl,(PROGEND)
        ld      (ENDCOPY),hl
        ld      (VAREND),hl
        ld      hl,(RAMTOP)
        ld      (HEAPLOW),hl
        ld      hl,LETTERS              ; CHAINS and PLACES too, whole: a program from outside may have any names
        xor     a
clear1: ld      (hl),a
        inc     l
        jr      nz,clear1
        inc     h
        ld      a,h
        cp      (PLACES >> 8) + 1
        ld      a,l
        jr      c,clear1
        ld      h,a
        ld      l,a
        ld      (OLDTEXT),hl
        ld      (ERRLINE),hl
        ld      (ERRSTATE),a
        ld      (SHADOWS),a
        ld      (TEMPLEN),a
        ld      (SLEN),a
        ld      hl,(PROGSTART)
        dec     hl
        ld      (hl),a                  ; as if a line ended there
        ld      (DATAPTR),hl
        ld      hl,PENDING
        ld      (STRTOP),hl
        ld      hl,STACKLOW
        ld      (hl),a                  ; no record
        inc     hl
        ld      (CSP),hl
        ret

; CLEAR [address]: the address becomes the end of BASIC's memory; below the program it is no address.
st_clear:
        call    at_end
        jp      z,clear
        int_arg
        ld      bc,-PROGRAM             ; room for strings that other machines ask for
        push    hl
        add     hl,bc
        pop     hl
        jp      nc,clear
        push    hl
        ld      bc,(PROGEND)
        inc     b                       ; at least 256 bytes
        or      a
        sbc     hl,bc
        jr      c,memory_error
        pop     hl
        dec     hl                      ; the last byte must be RAM, not ROM
        ld      a,(hl)
        cpl
        ld      (hl),a
        cp      (hl)
        jr      nz,memory_error
        cpl
        ld      (hl),a
        inc     hl
        ld      (RAMTOP),hl
        jp      clear

; Room for BC bytes behind the variables, else error; may move strings. Keeps BC, DE.
need_memory:
        call    memory_left
        ret     nc
        call    collect
        call    memory_left
        ret     nc
memory_error:
        raise   E_MEMORY
; CF = 1 if BC bytes and a few more don't fit.
memory_left:
        ld      hl,(VAREND)
        add     hl,bc
        ret     c
        push    bc
        ld      bc,MEM_SPACE
        add     hl,bc
        ld      b,h
        ld      c,l
        ld      hl,(HEAPLOW)
        or      a
        sbc     hl,bc
        pop     bc
        ret

; C = marker, DE = name. HL = value and CF = 0, DE behind the name; or CF = 1, DE kept. Keeps BC.
find_var:
        ld      a,(de)
        add     a,a
        ld      l,a
        ld      h,CHAINS >> 8
find1:  load_hl
        or      h
        jr      z,find_none
        push    hl
        inc     hl
        inc     hl
        ld      a,(hl)
        cp      c
        jr      nz,find3
        push    de
find2:  inc     hl
        ld      a,(de)
        cp      (hl)
        jr      nz,find_differs
        inc     de
        add     a,a                     ; the last character
        jr      nc,find2
        pop     af
        pop     af
        inc     hl
        or      a
        ret
find_differs:
        pop     de
find3:  pop     hl
        jr      find1
find_none:
        scf
        ret

; A new variable at VAREND with its head, BC = size of its value, all 0; HL = value. A = marker, DE = name,
; behind it on return. Changes A, BC.
make_var:
        push    af
        push    de
        push    bc
        inc     bc
        inc     bc
        inc     bc
make1:  inc     bc                      ; and the name
        ld      a,(de)
        inc     de
        add     a,a
        jr      nc,make1
        call    need_memory
        pop     bc
        pop     de
        ld      a,(de)                  ; first of its chain
        add     a,a
        push    bc
        ld      c,a
        ld      b,CHAINS >> 8
        ld      hl,(VAREND)
        ld      a,(bc)
        ld      (hl),a
        ld      a,l
        ld      (bc),a
        inc     hl
        inc     bc
        ld      a,(bc)
        ld      (hl),a
        dec     hl
        ld      a,h
        ld      (bc),a
        inc     hl
        inc     hl
        pop     bc
        pop     af
        ld      (hl),a
make2:  inc     hl
        ld      a,(de)
        ld      (hl),a
        inc     de
        add     a,a
        jr      nc,make2
        inc     hl
; BC bytes of 0 from HL to be the variables' last. Keeps DE, HL.
zero_memory:
        push    hl
        push    de
        ld      d,h
        ld      e,l
        inc     de
        ld      (hl),0
        dec     bc
        ld      a,b
        or      c
        jr      z,zero1
        ldir
zero1:  ld      (VAREND),de
        pop     de
        pop     hl
        ret

; Value HL of the numeric variable whose name is at DE, made if it was not there. DE behind the name.
; Changes A, BC.
simple_num:
        ld      a,(de)
        add     a,a
        jr      nc,simple_long
        inc     de
        letter_value
        ret     nz
        ld      bc,6
        call    need_memory
        ld      hl,(VAREND)
        dec     de
        ld      a,(de)
        inc     de
        add     a,a
        push    de
        ld      e,a
        ld      d,LETTERS >> 8
        ld      a,l
        ld      (de),a
        inc     de
        ld      a,h
        ld      (de),a
        pop     de
        jr      zero_memory
simple_long:
        ld      c,TK_VNUM
        call    find_var
        ret     nc
        ld      bc,6
        ld      a,TK_VNUM
        jr      make_var

; An integer variable: HL = its value, with the 0 in front that makes a number of it.
simple_int:
        ld      c,TK_VINT
        call    find_var
        ret     nc
        ld      bc,3
        ld      a,TK_VINT
        jp      make_var

; The variable or array element at DE (marker) to be given a value: HL = its address, A = 0 string, 1 number,
; 2 whole number of two bytes. Made if it was not there. Changes F, BC.
lvalue: ld      a,(de)
        inc     de
        cp      TK_VSTR
        jr      z,lvalue_str
        jr      c,lvalue_num
        cp      TK_TEXT
        jr      nc,lvalue_other
lvalue_array:
        ld      c,a
        push    bc
        call    array_element
        pop     bc
        ld      a,c                     ; TK_ANUM, TK_ASTR, TK_AINT
        cp      TK_AINT
        jr      z,lvalue_two
        and     1
        ret
lvalue_str:
        ld      c,a
        call    find_var
        ld      a,0
        ret     nc
        ld      bc,3
        ld      a,TK_VSTR
        call    make_var
        xor     a
        ret
lvalue_num:
        or      a
        jr      z,lvalue_bad
        call    simple_num
lvalue_one:
        ld      a,1
        ret
lvalue_other:
        cp      TK_VINT
        jr      c,lvalue_bad
        jr      nz,lvalue_word
        call    simple_int
        inc     hl
lvalue_two:
        ld      a,2
        ret
; A word that is a variable from now on.
lvalue_word:
        cp      TK_AINT
        jr      z,lvalue_array
        push    de
        call    word_name
        jr      nz,lvalue_bad
        ld      a,1
        ld      (SHADOWS),a
        call    simple_long
        pop     de
        jr      lvalue_one
lvalue_bad:
        jp      syntax_error

; The name of PI, IN or TIME as a variable: DE, C = its marker; NZ if A is none of them. Keeps A, B.
word_name:
        ld      c,TK_VNUM
        ld      de,name_pi
        cp      TK_PI
        ret     z
        ld      de,name_in
        cp      TK_IN
        ret     z
        ld      de,name_time
        cp      TK_TIME
        ret
name_pi:
        .ascii  "P\311"
name_in:
        .ascii  "I\316"
name_time:
        .ascii  "TIM\305"

; [LET] variable = value. The most frequent case, a numeric variable, goes first.
st_let: ld      a,(de)
        inc     de
; A = marker.
st_assign:
        dec     a
        jr      nz,assign_other
        call    simple_num
        ld      a,(de)
        cp      TK_EQ
        jr      nz,lvalue_bad
        inc     de
        push    hl
        call    eval
        jr      nc,assign_type
        pop     hl
        jp      num_store
assign_other:
        dec     de
        call    lvalue
        push    hl
        push    af
        expect  TK_EQ
        call    eval
        jr      c,assign1
        pop     af
        or      a
        jr      nz,assign_type
        pop     hl
        jp      str_assign
assign1:
        pop     af
        pop     hl
        dec     a
        jp      z,num_store
        inc     a
; The value in FACC to HL, A as lvalue gives it. Keeps BC, DE.
value_store:
        or      a
        jr      z,assign_type
        dec     a
        jp      z,num_store
        call    facc_round
        push    de
        ex      de,hl
        ld      hl,(FACC + 1)
        ex      de,hl
        ld      (hl),e
        inc     hl
        ld      (hl),d
        inc     hl
        pop     de
        ret
assign_type:
        jp      type_error

; FACC becomes the nearest small integer, or an overflow. Keeps BC, DE, HL.
facc_round:
        ld      a,(FACC)
        or      a
        ret     z
        push    hl
        push    de
        push    bc
        ld      hl,half
        call    fp_add
        call    fp_int
        pop     bc
        pop     de
        pop     hl
        ld      a,(FACC)
        or      a
        ret     z
        raise   E_OVERFLOW

; DE behind the name at DE. Changes A.
skip_name:
        ld      a,(de)
        inc     de
        add     a,a
        jr      nc,skip_name
        ret
