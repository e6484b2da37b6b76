; FOR NEXT, WHILE WEND.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  st_for, st_next, st_while, st_wend
        .text

; FOR variable = start TO limit [STEP step]. A loop of the same variable that is still open in this subroutine
; is given up, with all that was begun in it.
st_for: call    for_variable
        ld      (FORKIND),a
        expect  TK_EQ
        push    hl
        call    for_number
        pop     hl
        push    hl
        ld      a,(FORKIND)
        or      a
        jr      nz,for3
        call    num_store
        jr      for4
for3:   inc     hl
        call    value_store
for4:   pop     bc
        push    bc
        call    find_for
        call    z,drop_for
        ld      a,CTL_FOR
        call    ctl_room
        expect  TK_TO
        call    for_number
        ld      hl,(CSP)
        ld      bc,8
        add     hl,bc
        call    num_store
        ld      a,(de)
        ld      hl,1
        cp      TK_STEP
        jr      nz,for1
        inc     de
        call    for_number
        jr      for2
for1:   call    fp_fromint
for2:   ld      hl,(CSP)
        pop     bc
        ld      (hl),c
        inc     hl
        ld      (hl),b
        inc     hl
        push    bc
        call    num_store
        ld      bc,6
        add     hl,bc
        call    put_place
        ld      (hl),CTL_FOR
        inc     hl
        ld      (CSP),hl
        push    hl
        pop     ix
        ld      a,(FORKIND)
        or      a
        jr      z,for5
        ld      (ix-6),a                ; it must stay a small integer
for5:   pop     hl
        ld      a,(hl)                  ; the first value
        or      a
        jr      nz,for6
        inc     hl
        load_hl
        call    fp_fromint
        jr      for7
for6:   call    fp_load
for7:   call    for_over
        ret     nc
        call    drop_for
        ld      bc,TK_FOR*256 + TK_NEXT
        ld      a,E_NEXT
        call    skip_block
        jp      next_more
for_syntax:
        jp      syntax_error

; A number for the loop: a small integer if its variable is one.
for_number:
        call    eval_num
        ld      a,(FORKIND)
        or      a
        jp      nz,facc_round
        ret

; The variable at DE: HL = its address, A = 0, or 2 for an integer one.
for_variable:
        ld      a,(de)
        inc     de
        dec     a
        jp      z,simple_num_0
        cp      TK_VINT - 1
        jr      z,for_int
        add     a,a
        jr      nc,for_syntax
        dec     de
        call    lvalue                  ; a word that is a variable
        xor     a
        ret
for_int:
        call    simple_int
        ld      a,2
        ret
simple_num_0:
        call    simple_num
        xor     a
        ret

; The record that ends at IX is dropped, with all above it. Changes HL; keeps BC.
drop_for:
        push    bc
        ld      bc,-CTL_FOR
        add     ix,bc
        pop     bc
        ld      (CSP),ix
        ret

; DE and CURLINE to (HL); HL behind. Changes A, BC.
put_place:
        keep_place
        ret

; The loop of the variable at BC (any if 0) among the records from the top down to a subroutine's: Z and IX =
; behind its record, else NZ. Changes A.
find_for:
        ld      ix,(CSP)
find1:  ld      a,(ix-1)
        cp      CTL_FOR
        jr      nz,find2
        ld      a,b
        or      c
        ret     z
        ld      a,(ix-19)
        cp      c
        jr      nz,find3
        ld      a,(ix-18)
        cp      b
        ret     z
find3:  ld      a,CTL_FOR
find2:  cp      CTL_WHILE
        ret     c                       ; a subroutine's or none: NZ too
        neg
        push    de
        ld      e,a
        ld      d,0xFF
        add     ix,de
        pop     de
        jr      find1

; NEXT [variable, ...]
st_next:
        ld      bc,0
        ld      a,(de)
        dec     a
        jr      nz,next4
        inc     de
        call    simple_num
next5:  top_record CTL_FOR              ; most often that of the innermost loop
        jr      nz,next7
        ld      a,(ix-19)
        cp      l
        jr      nz,next7
        ld      a,(ix-18)
        cp      h
        jr      z,next8
next7:  ld      b,h
        ld      c,l
next1:  call    find_for
        jr      nz,next_none
        ld      (CSP),ix
next10: ld      l,(ix-19)
        ld      h,(ix-18)
next8:  ld      a,(hl)
        or      (ix-17)
        or      (ix-11)
        jr      nz,next_real
        push    de
        inc     hl                      ; all three are integers
        ld      c,(hl)
        inc     hl
        ld      b,(hl)
        ld      e,(ix-16)
        ld      d,(ix-15)
        ex      de,hl
        or      a
        adc     hl,bc
        jp      pe,next_overflow
        ex      de,hl
        ld      (hl),d
        dec     hl
        ld      (hl),e
        ld      l,(ix-10)
        ld      h,(ix-9)
        or      a
        sbc     hl,de
        ld      a,h
        jp      po,next2
        cpl
next2:  bit     7,(ix-15)               ; bit 7 of A: limit < value
        jr      nz,next_down
        rlca
        jr      c,next_done
next_again:
        pop     hl
        jp      ctl_resume
next_down:
        rlca
        jr      c,next_again
        ld      a,h
        or      l
        jr      z,next_again
next_done:
        pop     de
next3:  call    drop_for
; An outer loop is over too when a comma follows.
next_more:
        ld      a,(de)
        cp      ','
        ret     nz
        inc     de
        jr      st_next
next4:  cp      TK_VINT - 1
        jr      z,next6
        inc     a
        jp      m,next9
        top_record CTL_FOR              ; no variable: the innermost loop
        jr      nz,next1
        jr      next10
next9:  push    de
        call    word_name
        pop     de
        ld      bc,0
        jr      nz,next1
next6:  call    for_variable
        jp      next5
next_none:
        raise   E_NEXT

next_overflow:
        pop     de
        ld      a,(ix-6)
        or      a
        jp      nz,fp_overflow
next_real:
        push    de
        ld      l,(ix-19)
        ld      h,(ix-18)
        push    hl
        call    fp_load
        push    ix
        pop     hl
        ld      bc,-17
        add     hl,bc
        push    ix
        call    fp_add
        pop     ix
        pop     hl
        call    num_store
        pop     de
        call    for_over
        jr      c,next3
        jp      ctl_resume

; CF = 1 when the value in FACC is beyond the limit of the FOR record that ends at IX. Keeps DE, IX.
for_over:
        push    de
        push    ix
        push    ix
        pop     hl
        ld      bc,-11
        add     hl,bc
        call    fp_cmp                  ; CF = 1: limit < value
        pop     ix
        pop     de
        push    af
        ld      a,(ix-17)
        or      a
        ld      a,(ix-16)               ; the byte with the sign
        jr      nz,over1
        ld      a,(ix-15)
over1:  rlca
        jr      c,over_down
        pop     af
        ret
over_down:
        pop     af
        ccf
        ret     nz
        or      a
        ret

; Skips to behind the word C that closes a block, DE being in it; words B open inner ones. CURLINE follows.
; Not found: error A. Changes all but DE.
skip_block:
        push    af
        ld      hl,(CURLINE)
        ld      (SCANLINE),hl
        ld      a,1
        ld      (DIMCOUNT),a            ; depth
block1: call    skip_token
        or      a
        jr      z,block_line
        cp      b
        jr      nz,block2
        ld      hl,DIMCOUNT
        inc     (hl)
        jr      block1
block2: cp      c
        jr      nz,block1
block_close:
        ld      a,(de)                  ; NEXT with its variables
        dec     a
        jr      z,block4
        cp      TK_VINT - 1
        jr      z,block4
        push    bc
        push    de
        inc     a
        call    word_name
        pop     de
        pop     bc
        jr      nz,block3
block4: call    skip_token
block3: ld      hl,DIMCOUNT
        dec     (hl)
        jr      z,block_found
        ld      a,(de)
        cp      ','
        jr      nz,block1
        inc     de
        jr      block_close
block_line:
        ld      a,(de)
        or      a
        jr      z,block_none
        ld      (SCANLINE),de
        inc     de
        inc     de
        inc     de
        jr      block1
block_found:
        pop     af
        ld      hl,(SCANLINE)
        ld      (CURLINE),hl
        ret
block_none:
        pop     af
        jp      raise_error

; WHILE condition ... WEND
st_while:
        top_record CTL_WHILE            ; come to by GOTO from inside: no second record
        jr      nz,while1
        ld      a,(ix-5)
        cp      e
        jr      nz,while1
        ld      a,(ix-4)
        cp      d
        call    z,drop_while
while1: ld      a,CTL_WHILE
        call    ctl_room
        inc     hl
        call    put_place
        ld      (hl),CTL_WHILE
        inc     hl
        ld      (CSP),hl
        call    eval_num
        call    facc_test
        ret     nz
        call    drop_while
        ld      bc,TK_WHILE*256 + TK_WEND
        ld      a,E_WEND
        jp      skip_block

; The top record, WHILE, is dropped. Changes BC, HL.
drop_while:
        ld      hl,(CSP)
        ld      bc,-CTL_WHILE
        add     hl,bc
        ld      (CSP),hl
        ret

; WEND: loops begun inside are given up, but not by one without its WHILE.
st_wend:
        ld      ix,(CSP)
        ld      bc,-CTL_FOR
wend1:  ld      a,(ix-1)
        cp      CTL_FOR
        jr      nz,wend2
        add     ix,bc
        jr      wend1
wend2:  cp      CTL_WHILE
        jr      nz,wend_none
        ld      (CSP),ix
        push    de
        ld      hl,(CURLINE)
        push    hl
        call    ctl_resume
        call    eval_num
        call    facc_test
        pop     hl
        jr      nz,wend_again
        pop     de
        ld      (CURLINE),hl
        jr      drop_while
wend_again:
        pop     hl
        ret
wend_none:
        raise   E_WEND
