; Strings: the heap, assignment, joining, comparison.
;
; The heap grows down from RAMTOP. A block is the characters, the address of the descriptor that owns them (a
; word, 0 for an intermediate result), and their number (a byte). A descriptor is the length and the address;
; that of a variable may also point to a constant of the program, and the intermediate ones (SLEN, PENDING) to
; a part of a block. A block whose owner points elsewhere by now is garbage.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  str_push, str_pop, str_alloc, str_assign, str_concat, str_compare, str_take, str_buffer, copy_value
        .text

; SLEN, SADDR are kept among the pending strings. Keeps A, BC, DE.
str_push:
        push    af
        push    de
        ld      hl,(STRTOP)
        ld      a,l
        cp      PENDINGEND & 0xFF
        jr      nc,push_full
        ld      a,(SLEN)
        ld      (hl),a
        inc     hl
        ld      de,(SADDR)
        ld      (hl),e
        inc     hl
        ld      (hl),d
        inc     hl
        ld      (STRTOP),hl
        pop     de
        pop     af
        ret
push_full:
        raise   E_COMPLEX

; Takes the last pending string: A = length, HL = address. Keeps BC, DE.
str_pop:
        push    de
        ld      hl,(STRTOP)
        dec     hl
        ld      d,(hl)
        dec     hl
        ld      e,(hl)
        dec     hl
        ld      a,(hl)
        ld      (STRTOP),hl
        ex      de,hl
        pop     de
        ret

; Room for A characters, 1 to 255: HL. May move strings. Keeps A, BC, DE.
str_alloc:
        push    de
        push    bc
        push    af
        ld      b,0
        ld      c,a
        inc     bc
        inc     bc
        inc     bc
        call    need_memory
        pop     af
        ld      hl,(HEAPLOW)
        dec     hl
        ld      (hl),a
        dec     hl
        ld      (hl),0
        dec     hl
        ld      (hl),0
        ld      c,a
        ld      b,0
        or      a
        sbc     hl,bc
        ld      (HEAPLOW),hl
        ld      (TEMPLEN),a
        pop     bc
        pop     de
        ret

; A characters at HL become the string value, in a block of their own. They must not be in the heap unless
; they are those of SLEN, SADDR. Keeps DE.
str_take:
        ld      (SLEN),a
        ld      (SADDR),hl
copy_value:
        or      a
        ret     z
        push    de
        call    str_alloc
        ex      de,hl
        ld      hl,(SADDR)
        ld      (SADDR),de
        ld      c,a
        ld      b,0
        ldir
        pop     de
        ret

; The descriptor at HL, a variable's, gets the string value. Keeps DE.
str_assign:
        ld      a,(SLEN)
        ld      (hl),a
        or      a
        ret     z
        push    de
        push    hl
        ld      de,(SADDR)
        ld      hl,(PROGEND)
        or      a
        sbc     hl,de                   ; CF = 1: behind the program
        jr      c,assign1
        ld      hl,(PROGSTART)
        or      a
        sbc     hl,de
        jr      c,assign3               ; a constant of the program needs no copy
assign1:
        ld      hl,(HEAPLOW)            ; an intermediate result just finds its owner
        or      a
        sbc     hl,de
        jr      nz,assign2
        ld      a,(SLEN)
        ld      hl,TEMPLEN
        cp      (hl)
        jr      nz,assign2
        ld      l,a
        ld      h,0
        add     hl,de
        ld      a,(hl)
        inc     hl
        or      (hl)
        jr      z,assign_owner
assign2:
        ld      a,(SLEN)
        pop     hl
        push    hl
        ld      (hl),0                  ; what it had is garbage, and it stays empty if there is no room
        call    copy_value
        pop     hl
        push    hl
        ld      a,(SLEN)
        ld      (hl),a
        ld      de,(SADDR)
        ld      l,a
        ld      h,0
        add     hl,de
        inc     hl
assign_owner:
        pop     bc                      ; HL: high byte of the owner
        push    bc
        ld      (hl),b
        dec     hl
        ld      (hl),c
assign3:
        pop     hl
        inc     hl
        ld      (hl),e
        inc     hl
        ld      (hl),d
        pop     de
        ret

; The last pending string with the string value behind it becomes the string value. Keeps DE.
str_concat:
        push    de
        ld      hl,(STRTOP)
        dec     hl
        dec     hl
        dec     hl
        ld      a,(SLEN)
        ld      b,a
        or      a
        jr      z,concat1               ; nothing to join
        ld      a,(hl)
        or      a
        jr      z,concat2
        add     a,b
        jr      c,concat_long
        push    af
        call    str_alloc
        push    hl
        ex      de,hl
        call    str_pop
        ld      b,0
        ld      c,a
        ldir
        ld      hl,(SADDR)
        ld      a,(SLEN)
        ld      c,a
        ldir
        pop     hl
        pop     af
        jr      concat3
concat1:
        call    str_pop
concat3:
        ld      (SADDR),hl
        ld      (SLEN),a
        pop     de
        ret
concat2:
        call    str_pop
        pop     de
        ret
concat_long:
        raise   E_STRING

; Compares the last pending string, which is taken, with the string value: A = 1 equal, 2 less, 4 greater.
; Keeps DE.
str_compare:
        push    de
        call    str_pop
        ld      c,a
        ld      a,(SLEN)
        ld      b,a
        ld      de,(SADDR)
        inc     b
        inc     c
compare1:
        dec     c
        jr      z,compare_end
        dec     b
        ld      a,4
        jr      z,compare3
        ld      a,(de)
        inc     de
        cp      (hl)
        inc     hl
        jr      z,compare1
        ld      a,4
        jr      c,compare3              ; CF = 1: the right one is smaller
        ld      a,2
compare3:
        pop     de
        ret
compare_end:
        dec     b
        ld      a,1
        jr      z,compare3
        inc     a
        jr      compare3

; The string value to TEXTBUF with a 0 behind it: HL = TEXTBUF. Keeps DE.
str_buffer:
        push    de
        ld      hl,(SADDR)
        ld      de,TEXTBUF
        ld      a,(SLEN)
        ld      c,a
        ld      b,0
        or      a
        jr      z,buffer1
        ldir
buffer1:
        xor     a
        ld      (de),a
        pop     de
        ld      hl,TEXTBUF
        ret
