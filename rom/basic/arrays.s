; Arrays: elements, DIM.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  array_element, st_dim, times
        .text

; C = marker of an array, DE = its name. HL = address of the element, DE behind the closing bracket. An array
; that is not there gets elements 0 to 10 in each dimension. Changes everything.
array_element:
        push    bc
        call    find_var
        jr      nc,element1
        push    de
        call    count_subscripts        ; A
        pop     de
        pop     bc
        push    bc
        ld      b,a
        ld      hl,DIMSIZES
        push    bc
auto1:  ld      (hl),11
        inc     hl
        ld      (hl),0
        inc     hl
        djnz    auto1
        pop     bc
        call    make_array
element1:
        ld      b,(hl)                  ; dimensions
        inc     hl
        push    hl
        ld      hl,0
element2:
        push    hl                      ; stack: number so far, next dimension
        push    bc
        call    eval_index
        ld      (INDEX),hl
        ld      (SCANTEXT),de
        pop     bc
        pop     de
        pop     hl
        ld      a,d
        or      e
        call    nz,times
        push    de
        ld      e,(hl)
        inc     hl
        ld      d,(hl)
        inc     hl
        push    hl
        ld      hl,(INDEX)
        or      a
        sbc     hl,de
        jr      nc,element_bad
        ld      de,(INDEX)
        pop     hl
        ex      (sp),hl
        add     hl,de                   ; number*elements + index; stack: next dimension
        ld      de,(SCANTEXT)
        ld      a,(de)
        inc     de
        djnz    element3
        cp      ')'
        jr      nz,element_bad
        ld      b,h
        ld      c,l
        ld      (INDEX),hl
        add     hl,hl
        add     hl,bc
        pop     bc                      ; the elements
        ex      (sp),hl
        ld      a,l                     ; marker
        pop     hl
        cp      TK_ASTR
        jr      z,element4
        jr      nc,element5
        add     hl,hl
element4:
        add     hl,bc
        ret
element5:                               ; twice the number, of which HL is three times
        ld      de,(INDEX)
        or      a
        sbc     hl,de
        add     hl,bc
        ld      de,(SCANTEXT)
        inc     de
        ret
element3:
        cp      ','
        jr      z,element2
element_bad:
        raise   E_SUBSCRIPT

; A = number of subscripts of the array whose name is at DE. Changes everything.
count_subscripts:
        call    skip_name
        ld      bc,0x0100               ; B count, C depth of brackets
count1: call    skip_token
        or      a
        jp      z,syntax_error
        cp      TK_AINT
        jr      z,count_open
        cp      TK_TEXT
        jr      nc,count2
        cp      TK_ANUM
        jr      nc,count_open
        jr      count1
count2: cp      '('
        jr      z,count_open
        cp      ')'
        jr      z,count_close
        cp      ','
        jr      nz,count1
        ld      a,c
        or      a
        jr      nz,count1
        inc     b
        jr      count1
count_open:
        inc     c
        jr      count1
count_close:
        dec     c
        jp      p,count1
        ld      a,b
        cp      DIMMAX + 1
        ret     c
        jr      element_bad

; DE = DE * word at HL, CF = 1 if that is above 65535. Keeps BC, HL.
times:  push    bc
        push    hl
        ld      c,(hl)
        inc     hl
        ld      b,(hl)
        ld      hl,0
        ld      a,16
times1: add     hl,hl
        jr      c,times3
        ex      de,hl
        add     hl,hl
        ex      de,hl
        jr      nc,times2
        add     hl,bc
        jr      c,times3
times2: dec     a
        jr      nz,times1
times3: ex      de,hl
        pop     hl
        pop     bc
        ret

; Makes an array: C = marker, DE = name, B = dimensions, DIMSIZES = elements of each. HL = its value, DE behind
; the name. Changes everything.
make_array:
        push    de
        ld      de,6
        ld      a,c
        cp      TK_ANUM
        jr      z,array1
        ld      e,3
        cp      TK_ASTR
        jr      z,array1
        dec     e
array1: ld      hl,DIMSIZES
        push    bc
array2: call    times
        jr      c,array_memory
        inc     hl
        inc     hl
        djnz    array2
        pop     bc
        ld      h,0
        ld      l,b
        add     hl,hl
        inc     hl
        add     hl,de
        jr      c,array_memory
        ld      a,h
        cp      0xC0
        jr      nc,array_memory
        pop     de
        ld      a,b
        ld      (DIMCOUNT),a
        ld      a,c
        ld      b,h
        ld      c,l
        call    make_var
        push    hl
        push    de
        ld      a,(DIMCOUNT)
        ld      (hl),a
        inc     hl
        ex      de,hl
        add     a,a
        ld      c,a
        ld      b,0
        ld      hl,DIMSIZES
        ldir
        pop     de
        pop     hl
        ret
array_memory:
        jp      memory_error

; DIM array(largest subscript, ...), ...
st_dim: ld      a,(de)
        inc     de
        cp      TK_ANUM
        jr      z,dim1
        cp      TK_ASTR
        jr      z,dim1
        cp      TK_AINT
        jr      nz,dim_syntax
dim1:   ld      c,a
        push    de
        call    find_var
        jr      nc,dim_again
        call    skip_name
        ld      b,0
dim2:   push    bc
        call    eval_index
        pop     bc
        inc     hl                      ; 0 is an element too
        push    hl
        inc     b
        ld      a,(de)
        inc     de
        cp      ','
        jr      z,dim2
        cp      ')'
        jr      nz,dim_syntax
        ld      a,b
        cp      DIMMAX + 1
        jp      nc,element_bad
        ld      (SCANTEXT),de
        ld      hl,DIMSIZES
        add     a,a
        add     a,l
        ld      l,a
        ld      (INDEX),bc
dim3:   pop     de
        dec     hl
        ld      (hl),d
        dec     hl
        ld      (hl),e
        djnz    dim3
        ld      bc,(INDEX)
        pop     de
        call    make_array
        ld      de,(SCANTEXT)
        ld      a,(de)
        cp      ','
        ret     nz
        inc     de
        jr      st_dim
dim_syntax:
        jp      syntax_error
dim_again:
        raise   E_REDIM
