; Strings: the heap, assignment, joining, comparison.
;
; The heap grows down from RAMTOP. A block is the characters, the address of the descriptor that owns them (a
; word, 0 for an intermediate result), and their number (a byte). A descriptor is the length and the address;
; that of a variable may also point to a constant of the program, and the intermediate ones (SLEN, PENDING) to
; a part of a block. A block whose owner points elsewhere by now is garbage.
        .include "memory.inc"
        .include "errors.inc"
        .include "basic.inc"
        .globl  str_push, str_pop, str_alloc, str_assign, str_concat, str_compare, str_take, collect, str_buffer
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

; Moves all strings in use together below RAMTOP, from the highest one on: each block is looked at once. Keeps
; BC, DE.
collect:
        push    bc
        push    de
        ld      hl,(RAMTOP)
        ld      (GCSOURCE),hl
        ld      (GCTARGET),hl
collect1:
        ld      hl,(GCSOURCE)
        ld      de,(HEAPLOW)
        or      a
        sbc     hl,de
        jr      z,collect_end
        add     hl,de
        dec     hl
        ld      c,(hl)                  ; length
        dec     hl
        ld      d,(hl)
        dec     hl
        ld      e,(hl)                  ; owner
        push    hl                      ; end of the characters
        ld      b,0
        or      a
        sbc     hl,bc
        push    hl                      ; their start
        ld      a,d
        or      e
        jr      z,collect2
        ld      a,(de)
        cp      c
        jr      nz,collect2
        inc     de
        ld      a,(de)
        cp      l
        jr      nz,collect2
        inc     de
        ld      a,(de)
        cp      h
        jr      z,collect_owned
collect2:
        ld      de,0
collect_owned:                          ; DE = 0, or the owner + 2
        pop     hl
        ex      (sp),hl                 ; HL = end, stack: start
        push    de
        call    pending_in              ; CF = 1 if one points from the start to the end
        pop     de
        pop     hl
        jr      c,collect3
        ld      a,d
        or      e
        jr      z,collect_next          ; garbage
collect3:
        push    hl                      ; start
        push    de                      ; owner + 2
        inc     bc
        inc     bc
        inc     bc                      ; size of the block
        ld      hl,(GCTARGET)
        ld      de,(GCSOURCE)
        or      a
        sbc     hl,de
        jr      z,collect_stays
        push    hl                      ; distance
        ld      hl,(GCSOURCE)
        dec     hl
        ld      de,(GCTARGET)
        dec     de
        lddr
        inc     de
        ld      (GCTARGET),de
        pop     bc                      ; distance
        pop     hl                      ; owner + 2
        ld      a,h
        or      l
        jr      z,collect4
        ld      (hl),d
        dec     hl
        ld      (hl),e
collect4:
        pop     hl                      ; start
        push    hl
        call    move_pending
        pop     hl
collect_next:
        ld      (GCSOURCE),hl
        jr      collect1
collect_stays:
        pop     de
        pop     hl
        ld      (GCTARGET),hl
        jr      collect_next
collect_end:
        ld      hl,(GCTARGET)
        ld      (HEAPLOW),hl
        xor     a
        ld      (TEMPLEN),a
        pop     de
        pop     bc
        ret

; CF = 1 if a pending string or the string value points into the characters that end at HL, BC of them.
; Changes A, DE, HL.
pending_in:
        push    bc
        ex      de,hl                   ; DE = end
        ld      hl,SADDR
pending1:
        push    hl
        ld      a,(hl)
        inc     hl
        ld      h,(hl)
        ld      l,a
        or      a
        sbc     hl,de
        jr      nc,pending2
        add     hl,bc                   ; carry: not below the start
        jr      c,pending_yes
pending2:
        pop     hl
        inc     hl
        inc     hl
        inc     hl
        ld      a,(STRTOP)
        inc     a
        cp      l                       ; the address is the second byte
        jr      nz,pending1
        pop     bc
        or      a
        ret
pending_yes:
        pop     hl
        pop     bc
        scf
        ret

; The block from HL (to GCSOURCE) has moved up by BC: so do the pending strings in it. Changes A, DE, HL.
move_pending:
        ex      de,hl                   ; DE = start
        ld      hl,SADDR
moved1: push    hl
        ld      a,(hl)
        inc     hl
        ld      h,(hl)
        ld      l,a
        push    hl
        or      a
        sbc     hl,de
        pop     hl
        jr      c,moved2
        push    de
        ld      de,(GCSOURCE)
        or      a
        sbc     hl,de
        add     hl,de
        pop     de
        jr      nc,moved2
        add     hl,bc
        ex      de,hl
        ex      (sp),hl                 ; DE = new address, HL = its place, stack: start
        ld      (hl),e
        inc     hl
        ld      (hl),d
        dec     hl
        pop     de
        jr      moved3
moved2: pop     hl
moved3: inc     hl
        inc     hl
        inc     hl
        ld      a,(STRTOP)
        inc     a
        cp      l
        jr      nz,moved1
        ret
