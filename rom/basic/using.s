; PRINT USING, in the extension ROM.
        .include "math/math.inc"
        .include "basic.inc"
        .globl  using_value, using_rest
        .section .ext,"x"

; Bits of USEFLAGS.
        .equ    U_COMMA,   0            ; , between thousands
        .equ    U_DOLLAR,  1            ; $$
        .equ    U_STAR,    2            ; **
        .equ    U_PLUS,    3            ; + in front
        .equ    U_BEHIND,  4            ; sign behind: +
        .equ    U_MINUS,   5            ; or -
        .equ    U_POINT,   6
        .equ    U_EXP,     7            ; ^^^^
        .equ    USEDIGITS, 12           ; digits that count

; What is left of the text up to the next field. Changes everything.
using_rest:
        call    using_text
; From HL on up to the next field, which is not printed: A = its first character, or 0 at the end.
using_scan:
        ld      a,(hl)
        or      a
        ret     z
        cp      '!'
        ret     z
        cp      '&'
        ret     z
        cp      0x5C                    ; backslash
        jr      nz,scan2
        push    hl
scan1:  inc     hl
        ld      a,(hl)
        cp      ' '
        jr      z,scan1
        pop     hl
        cp      0x5C                    ; backslash
        ret     z
        ld      a,(hl)
scan2:  call    number_field
        ret     z
        cp      '_'
        jr      nz,scan3
        inc     hl
        ld      a,(hl)
        or      a
        ret     z
scan3:  rst     RST_OUT
        inc     hl
        jr      using_scan

; Z when a number's field begins at HL; A = the character there.
number_field:
        ld      a,(hl)
        cp      '+'
        jr      nz,field1
        inc     hl
        call    field1
        dec     hl
        ld      a,(hl)
        ret
field1: ld      a,(hl)
        cp      '#'
        ret     z
        inc     hl
        cp      '.'
        jr      z,field2
        cp      '*'
        jr      z,field3
        cp      '$'
        jr      z,field3
        dec     hl
        ret
field2: ld      a,'#'
field3: cp      (hl)
        dec     hl
        ld      a,(hl)
        ret

; USETEXT = the text, HL = the place in it.
using_text:
        ld      hl,(STRTOP)
        dec     hl
        ld      d,(hl)
        dec     hl
        ld      e,(hl)
        dec     hl
        ld      c,(hl)
        ld      b,0
        ld      a,c
        ex      de,hl
        ld      de,USETEXT
        or      a
        jr      z,text1
        ldir
text1:  xor     a
        ld      (de),a
        ld      hl,USETEXT
        ld      a,(USINGAT)
        add     a,l
        ld      l,a
        ret     nc
        inc     h
        ret

; Prints the value, a number if A = 255, a string if A = 0, with the next field, and what stands before it.
using_value:
        push    af
        call    using_text
        call    using_scan
        or      a
        jr      nz,value1
        ld      hl,USINGAT
        cp      (hl)
        jr      z,using_bad             ; no field at all
        ld      (hl),a                  ; from the beginning again
        ld      hl,USETEXT
        call    using_scan
value1: pop     bc
        inc     b
        jr      z,value_number
        ld      c,1
        cp      '!'
        jr      z,value_string
        ld      c,255
        cp      '&'
        jr      z,value_string
        cp      0x5C                    ; backslash
        jr      nz,value_type
        ld      c,1
value2: inc     c
        inc     hl
        ld      a,(hl)
        cp      0x5C                    ; backslash
        jr      nz,value2
; C = length of the field, 255 = that of the string. HL = its last character.
value_string:
        inc     hl
        push    hl
        ld      hl,(SADDR)
        ld      a,(SLEN)
        ld      b,a
        inc     b
string1:
        dec     b
        jr      z,string2
        ld      a,(hl)
        inc     hl
        rst     RST_OUT
        dec     c
        jr      nz,string1
        jr      value_done
string2:
        ld      a,(SLEN)                ; blanks up to the field's length
        add     a,c
        inc     a
        jr      z,value_done            ; & has none
        ld      b,c
        ld      a,' '
        call    repeat
value_done:
        pop     hl
value_at:
        ld      de,-USETEXT
        add     hl,de
        ld      a,l
        ld      (USINGAT),a
        ret
value_type:
        sys     type_error
using_bad:
        sys     bad_value

; A number with the field at HL.
value_number:
        call    number_field
        jr      nz,value_type
        ld      bc,0                    ; B places before the point, C flags
        ld      d,b                     ; places behind
        cp      '+'
        jr      nz,parse1
        set     U_PLUS,c
        inc     hl
        ld      a,(hl)
parse1: cp      '*'
        jr      nz,parse2
        set     U_STAR,c
        inc     b
        inc     b
        inc     hl
        inc     hl
        ld      a,(hl)
        cp      '$'
        jr      nz,parse3
        dec     b                       ; one more, as if there were two
        dec     hl
parse2: cp      '$'
        jr      nz,parse3
        set     U_DOLLAR,c
        inc     b
        inc     b
        inc     hl
        inc     hl
parse3: ld      a,(hl)
        cp      '#'
        jr      z,parse4
        cp      ','
        jr      nz,parse5
        set     U_COMMA,c
parse4: inc     b
        inc     hl
        jr      parse3
parse5: cp      '.'
        jr      nz,parse7
        set     U_POINT,c
parse6: inc     hl
        ld      a,(hl)
        inc     d
        cp      '#'
        jr      z,parse6
        dec     d
parse7: push    hl
        ld      e,4
parse8: cp      '^'
        jr      nz,parse9
        inc     hl
        ld      a,(hl)
        dec     e
        jr      nz,parse8
        set     U_EXP,c
        ex      (sp),hl
parse9: pop     hl
        bit     U_PLUS,c
        jr      nz,parse11
        ld      a,(hl)
        cp      '+'
        jr      nz,parse10
        set     U_BEHIND,c
        inc     hl
parse10:
        cp      '-'
        jr      nz,parse11
        set     U_MINUS,c
        inc     hl
parse11:
        call    value_at_keep
        ld      a,c
        ld      (USEFLAGS),a
        ld      a,b
        ld      (USEWHOLE),a
        ld      a,d
        ld      (USEPARTS),a

; The digits. Rounded once for good at the field's last place, from twelve digits.
        sys     fp_sign
        rla
        ld      a,0
        jr      nc,sign1
        ld      a,'-'
sign1:  ld      (USESIGN),a
        sys     fp_abs
        ld      a,USEDIGITS
        sys     fp_digits
        ld      a,(USEFLAGS)
        ld      c,a
        rla
        jr      nc,round1
        ld      a,(USEWHOLE)            ; digits before the point; one place is the sign's
        ld      b,a
        ld      a,c
        and     1 << U_PLUS | 1 << U_BEHIND | 1 << U_MINUS
        jr      nz,exp1
        ld      a,b
        sub     1
        adc     a,0
        ld      b,a
exp1:   ld      hl,PDEXP
        ld      a,(PCOUNT)
        or      a
        jr      nz,exp2
        ld      (hl),b                  ; zero has no exponent
exp2:   ld      a,(hl)
        sub     b
        ld      (USEEXP),a
        ld      (hl),b
        push    bc
        call    round
        pop     bc
        ld      hl,PDEXP
        ld      a,(hl)
        sub     b                       ; 1 when it was all nines
        ld      (hl),b
        ld      hl,USEEXP
        add     a,(hl)
        ld      (hl),a
        jr      build
round1: call    round

; What stands before the point, to USENUM.
build:  ld      a,(USEFLAGS)
        ld      c,a
        ld      hl,USENUM
        ld      a,(USESIGN)
        ld      b,a
        ld      a,c
        and     1 << U_BEHIND | 1 << U_MINUS
        jr      nz,build2               ; it comes behind
        ld      a,b
        or      a
        jr      nz,build1
        bit     U_PLUS,c
        jr      z,build2
        ld      a,'+'
build1: ld      (hl),a
        inc     hl
build2: bit     U_DOLLAR,c
        jr      z,build3
        ld      (hl),'$'
        inc     hl
build3: ld      b,0                     ; number of the digit
        ld      a,(PDEXP)
        dec     a
        jp      m,build6
        ld      d,a                     ; digits to come
build4: call    digit
        inc     b
        ld      a,d
        or      a
        jr      z,build7
        dec     d
        bit     U_COMMA,c
        jr      z,build4
build5: sub     3
        jr      z,build8
        jr      nc,build5
        jr      build4
build8: ld      (hl),','
        inc     hl
        jr      build4
build6: call    places                  ; no digit: a 0 if there is room
        ld      a,e
        cp      d
        jr      nc,build7
        ld      (hl),'0'
        inc     hl
build7: ld      (hl),0
        call    places
        ld      a,d
        sub     e
        ld      b,a
        ld      a,' '
        bit     U_STAR,c
        jr      z,out1
        ld      a,'*'
out1:   call    nc,repeat
        ld      a,'%'
        bit     7,b
        jr      z,out2
        rst     RST_OUT                 ; too long for its field
out2:   ld      hl,USENUM
out3:   ld      a,(hl)
        inc     hl
        or      a
        jr      z,out4
        rst     RST_OUT
        jr      out3
out4:   bit     U_POINT,c
        jr      z,out6
        ld      a,'.'
        rst     RST_OUT
        ld      a,(PDEXP)
        ld      b,a
        ld      a,(USEPARTS)
        ld      d,a
        inc     d
        jr      out5a
out5:   ld      hl,USENUM
        call    digit
        ld      a,(USENUM)
        rst     RST_OUT
        inc     b
out5a:  dec     d
        jr      nz,out5
out6:   bit     U_EXP,c
        jr      z,out8
        ld      a,'E'
        rst     RST_OUT
        ld      a,(USEEXP)
        ld      b,a
        ld      a,'+'
        bit     7,b
        jr      z,out7
        xor     a
        sub     b
        ld      b,a
        ld      a,'-'
out7:   rst     RST_OUT
        ld      a,b
        ld      hl,USENUM
        call    two_digits
        ld      hl,(USENUM)
        ld      a,l
        rst     RST_OUT
        ld      a,h
        rst     RST_OUT
out8:   ld      a,c
        and     1 << U_BEHIND | 1 << U_MINUS
        ret     z
        ld      a,(USESIGN)
        or      a
        jr      nz,out9
        ld      a,' '
        bit     U_BEHIND,c
        jr      z,out9
        ld      a,'+'
out9:   rst     RST_OUT
        ret

; D = places before the point, E = characters in USENUM up to HL. Changes A.
places: ld      a,(USEWHOLE)
        ld      d,a
        bit     U_PLUS,c
        jr      z,places1
        inc     d
places1:
        ld      a,l
        sub     USENUM & 0xFF
        ld      e,a
        ret

; The digit of number B (0 the first, beyond the last and before the first 0) to (HL), HL behind it. Changes A.
digit:  ld      (hl),'0'
        ld      a,(PCOUNT)
        dec     a
        jp      m,digit1
        cp      b
        jr      c,digit1
        push    de
        ld      a,b
        add     a,PDIGITS & 0xFF
        ld      e,a
        ld      d,PDIGITS >> 8
        ld      a,(de)
        ld      (hl),a
        pop     de
digit1: inc     hl
        ret

; A, B times. B becomes 0.
repeat: inc     b
        jr      repeat2
repeat1:
        push    af
        rst     RST_OUT
        pop     af
repeat2:
        djnz    repeat1
        ret

; Rounds the digits behind USEPARTS places from the point. Changes AF, DE, HL.
round:  ld      a,(USEPARTS)
        ld      hl,PDEXP
        add     a,(hl)                  ; digits that stay
        ld      hl,PCOUNT
        jp      m,round3
        cp      (hl)
        ret     nc
        ld      (hl),a
        ld      e,a
        add     a,PDIGITS & 0xFF
        ld      l,a
        ld      h,PDIGITS >> 8
        ld      a,(hl)
        cp      '5'
        ret     c
        inc     e
round4: dec     e
        jr      z,round5
        dec     hl
        inc     (hl)
        ld      a,(hl)
        cp      '9' + 1
        jr      nc,round4
        ld      a,e
        ld      (PCOUNT),a
        ret
round5: ld      (hl),'1'                ; all nines
        ld      hl,PDEXP
        inc     (hl)
        ld      a,1
        ld      (PCOUNT),a
        ret
round3: ld      (hl),0
        ret

; USINGAT = the place HL. Changes A.
value_at_keep:
        push    hl
        push    de
        call    value_at
        pop     de
        pop     hl
        ret
