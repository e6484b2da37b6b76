; ERASE, in the extension ROM.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  erase_array
        .section .ext,"x"

; The array whose value is at HL goes: what stands behind it moves down, and all that points there with it. Keeps DE.
erase_array:
        push    de
        dec     hl                      ; back to its head
erase1: dec     hl
        ld      a,(hl)
        cp      TK_SMALL
        jr      nc,erase1
        dec     hl
        dec     hl
        ld      (GCTARGET),hl           ; its beginning
        ex      de,hl                   ; its end: that of the last element
        ld      hl,3
        add     hl,de
        dec     hl
        ld      c,(hl)                  ; marker
        inc     hl
erase2: ld      a,(hl)
        inc     hl
        add     a,a
        jr      nc,erase2
        ld      b,(hl)                  ; dimensions
        inc     hl
        push    de
        ld      de,6
        ld      a,c
        cp      TK_ANUM
        jr      z,erase3
        ld      e,3
        cp      TK_ASTR
        jr      z,erase3
        dec     e
erase3: sys     times
        inc     hl
        inc     hl
        djnz    erase3
        add     hl,de
        ld      (GCSOURCE),hl
        pop     de
        or      a
        sbc     hl,de
        ex      de,hl                   ; HL = the record, DE = its size
        ld      c,(hl)                  ; out of its chain: what points to it gets its link
        inc     hl
        ld      b,(hl)
        dec     hl
        push    bc
        ld      b,h
        ld      c,l
        inc     hl
        inc     hl
        inc     hl
        ld      a,(hl)
        add     a,a
        ld      l,a
        ld      h,CHAINS >> 8
erase4: ld      a,(hl)                  ; HL = a link
        inc     hl
        cp      c
        jr      nz,erase5
        ld      a,(hl)
        cp      b
        jr      z,erase6
erase5: dec     hl
        load_hl
        jr      erase4
erase6: pop     bc
        ld      (hl),b
        dec     hl
        ld      (hl),c

; Pointers: of letters, chains and their links, the loops' variables, the strings' owners.
        ld      hl,LETTERS
erase7: push    hl
erase8: ld      c,(hl)
        inc     hl
        ld      b,(hl)
        dec     hl
        call    pointer
        ld      a,h                     ; a letter's variable has no link
        cp      LETTERS >> 8
        jr      z,erase9
        ld      h,b
        ld      l,c
        ld      a,b
        or      c
        jr      nz,erase8
erase9: pop     hl
        inc     hl
        inc     hl
        ld      a,h
        cp      PLACES >> 8
        jr      c,erase7

        push    ix
        ld      ix,(CSP)
erase13:
        ld      a,(ix-1)
        or      a
        jr      z,erase15
        cp      CTL_FOR
        jr      nz,erase14
        push    ix
        pop     hl
        ld      bc,-CTL_FOR
        add     hl,bc
        call    pointer
        ld      a,CTL_FOR
erase14:
        neg
        ld      c,a
        ld      b,-1
        add     ix,bc
        jr      erase13
erase15:
        pop     ix

        ld      hl,(RAMTOP)
erase16:
        ld      bc,(HEAPLOW)
        or      a
        sbc     hl,bc
        jr      z,erase18
        add     hl,bc
        dec     hl
        ld      c,(hl)                  ; length
        ld      b,0
        dec     hl
        dec     hl
        call    pointer
        or      a
        sbc     hl,bc
        jr      erase16

erase18:
        ld      hl,(VAREND)
        ld      bc,(GCSOURCE)
        or      a
        sbc     hl,bc
        ld      b,h
        ld      c,l
        ld      hl,(GCSOURCE)
        ld      de,(GCTARGET)
        ld      a,b
        or      c
        jr      z,erase19
        ldir
erase19:
        ld      (VAREND),de
        pop     de
        ret

; The pointer at HL: DE less if it points behind the array, 0 if into it. Keeps BC, DE, HL.
pointer:
        push    bc
        push    hl
        ld      c,(hl)
        inc     hl
        ld      b,(hl)
        ld      hl,(GCSOURCE)
        scf
        sbc     hl,bc                   ; CF = 1: at its end or behind
        ld      h,b
        ld      l,c
        jr      nc,pointer1
        sbc     hl,de
        inc     hl
        jr      pointer2
pointer1:
        ld      bc,(GCTARGET)
        or      a
        sbc     hl,bc
        jr      c,pointer3
        ld      hl,0
pointer2:
        ld      b,h
        ld      c,l
        pop     hl
        ld      (hl),c
        inc     hl
        ld      (hl),b
        dec     hl
        pop     bc
        ret
pointer3:
        pop     hl
        pop     bc
        ret
