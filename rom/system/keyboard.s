; Keyboard: from the matrix to codes, auto-repeat, the queue.
        .include "memory.inc"
        .globl  key_changes, key_repeat, key_get, key_poll
        .text

        .equ    REPEATDELAY, 25         ; interrupts until a held key comes again, and from then on
        .equ    REPEATSPEED, 3
        .equ    SHIFTROW, KEYROWS + 2*6 ; Shift is bit 3, Ctrl bit 4, Alt bit 0
        .equ    CTRLROW,  KEYROWS + 2*7

; From the interrupt when a key has gone down or up. One new key is served at a time; another one of the same
; moment comes at the next interrupt, since it stays unserved. Changes AF, BC, DE, HL.
key_changes:
        ld      hl,KEYROWS
        ld      bc,0                    ; B: row, C: 1 when a key has been served
changes1: ld    d,(hl)                  ; as it is
        inc     hl
        ld      a,(hl)                  ; as served
        and     d
        ld      (hl),a                  ; released keys leave
        ld      a,b                     ; Shift, Ctrl and Alt are always served
        cp      6
        ld      e,0x08
        jr      z,changes2
        cp      7
        ld      e,0x11
        jr      z,changes2
        ld      e,0
changes2: ld    a,d
        and     e
        or      (hl)
        ld      (hl),a
        cpl
        and     d                       ; new ones
        jr      z,changes3
        bit     0,c
        jr      nz,changes3
        ld      d,a
        neg
        and     d                       ; the lowest of them
        ld      d,a
        or      (hl)
        ld      (hl),a
        inc     c
        push    bc
        push    hl
        call    key_down
        pop     hl
        pop     bc
changes3: inc   hl
        inc     b
        ld      a,b
        cp      9
        jr      nz,changes1
        ret

; The key at row B, bit mask D has gone down. Changes AF, BC, DE, HL.
key_down:
        ld      hl,REPEATROW
        ld      (hl),b
        inc     hl
        ld      (hl),d
        ld      a,b
        add     a,a
        add     a,a
        add     a,a
        add     a,keys & 0xFF
        ld      l,a
        ld      a,keys >> 8
        adc     a,0
        ld      h,a
        jr      down2
down1:  inc     hl
down2:  srl     d
        jr      nz,down1
        ld      c,(hl)                  ; the key's own code
        ld      a,(CTRLROW)
        ld      d,a
        ld      hl,alt_keys
        rrca
        jr      c,down3                 ; with Alt: only what the table has
        ld      a,c
        cp      CAPSLOCK
        jr      z,down_caps
        ld      a,(SHIFTROW)
        and     0x08
        ld      e,a
        call    capital
        jr      c,down_letter
        ld      a,e
        or      a
        ld      a,c
        jr      z,down_code
        ld      hl,shift_keys
        call    find_pair
        jr      down_code
down3:  call    find_pair
        jr      nz,key_none
down_code:
        or      a
        jr      z,key_none
        cp      27
        jr      z,key_break
; A new code A: queued, and to be repeated.
down_queue:
        ld      hl,REPEATKEY
        ld      (hl),a
        inc     hl
        ld      (hl),REPEATDELAY
        jr      key_put

; A letter C, its capital in A: Ctrl, Shift and Caps Lock in turn.
down_letter:
        bit     4,d
        jr      z,letter1
        bit     7,a                     ; the Hungarian ones have no control code
        jr      nz,key_none
        and     0x1F
        cp      3
        jr      z,key_break
        jr      down_queue
letter1: ld     b,a
        ld      a,(CAPS)
        or      e
        ld      a,b
        jr      nz,down_queue
        ld      a,c
        jr      down_queue

down_caps:
        ld      hl,CAPS
        ld      a,(hl)
        xor     1
        ld      (hl),a
key_none:
        xor     a
        ld      (REPEATKEY),a
        ret

; Ctrl-C or the End key, code A: the queue is emptied, and the break does not enter it.
key_break:
        ld      (BREAKKEY),a
        ld      hl,(QUEUEHEAD)          ; L head, H tail
        ld      h,l
        ld      (QUEUEHEAD),hl
        jr      key_none

; Looks for A's own code C in the pairs at HL, ended by 0. Z and A = the other code, else NZ and A = C.
find_pair:
        ld      a,(hl)
        or      a
        jr      z,pair1
        inc     hl
        cp      c
        ld      a,(hl)
        ret     z
        inc     hl
        jr      find_pair
pair1:  ld      a,c
        inc     a                       ; NZ, as no key has the code 0xFF
        ld      a,c
        ret

; CF = 1 when C is a small letter, then A is the capital one. Changes AF.
capital:
        ld      a,c
        cp      'a'
        ccf
        ret     nc
        cp      'z' + 1
        jr      nc,capital1
        sub     'a' - 'A'
        scf
        ret
capital1:
        cp      0x90
        ccf
        ret     nc
        cp      0x99
        ret     nc
        sub     0x10
        scf
        ret

; From the interrupt while the key of REPEATKEY, at HL, is to repeat: as long as it is down.
key_repeat:
        ld      a,(REPEATROW)
        add     a,a
        add     a,KEYROWS & 0xFF
        ld      e,a
        ld      d,KEYROWS >> 8
        ld      a,(de)
        ld      b,a
        ld      a,(REPEATBIT)
        and     b
        jr      z,key_none
        ld      a,(hl)
        inc     hl
        dec     (hl)
        ret     nz
        ld      (hl),REPEATSPEED
        ld      hl,(QUEUEHEAD)          ; a program that doesn't keep up gets no heap of them
        ld      b,a
        ld      a,h
        cp      l
        ret     nz
        ld      a,b

; Queues A, or drops it when the queue is full (15 keys). Changes AF, BC, HL.
key_put:
        ld      b,a
        ld      hl,(QUEUEHEAD)
        ld      a,h
        inc     a
        and     15
        cp      l
        ret     z
        ld      (QUEUETAIL),a
        ld      l,h
        ld      h,KEYQUEUE >> 8
        ld      (hl),b
        ret

; A = code of the next key and NZ, or Z when there is none. Keeps the rest. Interrupts are on afterwards.
key_poll:
        ld      a,(BREAKKEY)
        or      a
        jr      nz,poll_break
        push    hl
        di                              ; the break key empties the queue
        ld      hl,(QUEUEHEAD)
        ld      a,h
        cp      l
        jr      z,poll1                 ; none: A is not of interest
        ld      a,l
        inc     a
        and     15
        ld      (QUEUEHEAD),a
        ld      h,KEYQUEUE >> 8
        ld      a,(hl)
        or      a
poll1:  ei
        pop     hl
        ret
poll_break:
        push    af
        xor     a
        ld      (BREAKKEY),a
        pop     af
        ret

; Waits for a key, A = code. Keeps the rest.
key_get:
        ei
        call    key_poll
        ret     nz
        halt
        jr      key_get

; Codes of the keys alone, row by row from bit 0. The Hungarian letters 0x90 to 0x98 are in the order
; a' e' i' o' o: o" u' u: u", their capitals stand at 0x80.
        .equ    CAPSLOCK, 0xFE
        .equ    K_BS,     8
        .equ    K_ENTER,  13
        .equ    K_ESC,    27
        .equ    K_LEFT,   28
        .equ    K_RIGHT,  29
        .equ    K_UP,     30
        .equ    K_DOWN,   31
        .equ    K_DELETE, 127
        .equ    K_INSERT, 0xA0
        .equ    K_HOME,   0xA1

keys:   .ascii  "5320"
        .byte   '6', 0x92, '1', '4'
        .byte   '-', '8', '9', 0x97, '*', 0x93, 0x94, '7'
        .ascii  "tew<z>qr"
        .byte   '^', 'i', 'o', 0x95, 0x3B, 0x96, 'p', 'u'
        .ascii  "gds/h+af"
        .byte   K_BS, 'k', 'l', 0x90, K_ENTER, 0x98, 0x91, 'j'
        .byte   'b', 'c', 'x', 0, 'n', CAPSLOCK, 'y', 'v'
        .byte   0, ',', '.', K_ESC, 0, ' ', '-', 'm'
        .byte   K_INSERT, K_UP, K_DOWN, '#', '&', K_RIGHT, K_LEFT, 0

; Pairs: the key's own code, its code with Shift; then the same with Alt.
shift_keys:
        .byte   '1', 0x27, '2', 0x22
        .ascii  "3+4!5%6/7=8(9)0&,?.:-_<[>]"
        .byte   0x3B, '$'
        .ascii  "^@#{&}"
        .byte   K_BS, K_DELETE, K_UP, K_HOME, 0
alt_keys:
        .byte   ',', 0x3B
        .ascii  "y>v@x#c&f[g]b{n}q\\w|1~3^7`-*"
        .byte   0x92, '<', 0x91, '$', 0
