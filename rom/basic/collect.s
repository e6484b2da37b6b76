; The string heap's garbage collection; strings.s tells what the heap looks like.
        .include "memory.inc"
        .include "basic.inc"
        .globl  collect
        .text

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
        load_hl
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
        load_hl
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
