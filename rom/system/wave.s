; Tape, in the extension ROM: blocks as waves. A bit is a whole cycle of two equal half waves, 6 samples each
; for 0 and 12 for 1: the deck takes a sample of 80 T-states when writing, and gives one at each reading of
; port 0x59, however long that takes. A block is a leader of 0 bits, a 1, the bytes with their bit 7 first, a
; CRC-16 (polynomial 0x1021, from 0xFFFF, high byte first) over all of them, and some 0 bits.
        .include "memory.inc"
        .globl  write_block, read_block
        .section .ext,"x"

        .equ    BLOCK,   TAPEBUF        ; kind, number, count less 1
        .equ    TCRC,    GFXVARS + 6    ; word
        .equ    LONG,    9              ; samples from which a half wave is a long one
        .equ    BITLONG, 18             ; samples from which a cycle is a 1
        .equ    GLITCH,  3              ; half waves below are noise
        .equ    STEADY,  64             ; good half waves that make a leader

; Writes the block of which BLOCK tells, with its bytes from HL, after DE cycles of leader. Interrupts are off
; afterwards. The End key sets BREAKKEY meanwhile. Changes AF, BC, DE, HL.
write_block:
        push    de
        push    hl
        call    crc
        ex      de,hl
        ld      (TCRC),hl
        pop     hl
        pop     de
        di
        ld      a,(PORT3)
        and     0xC0
        or      7                       ; the keyboard row of the End key
        out     (3),a
write1: or      a
        call    write_bit
        dec     de
        ld      a,d
        or      e
        jr      nz,write1
        scf
        call    write_bit
        push    hl
        ld      hl,BLOCK
        ld      d,3
        call    write_bytes
        pop     hl
        ld      a,(BLOCK + 2)
        inc     a
        ld      d,a
        call    write_bytes
        ld      a,(TCRC + 1)
        call    write_byte
        ld      a,(TCRC)
        call    write_byte
        ld      a,(PORT3)
        out     (3),a
        xor     a                       ; the last half waves are written by the edges behind them

; A byte A. Changes AF, B, C, E.
write_byte:
        ld      c,a
        ld      e,8
write2: rl      c
        call    write_bit
        dec     e
        jr      nz,write2
        ret

; D bytes (0: 256) from HL.
write_bytes:
        ld      a,(hl)
        inc     hl
        call    write_byte
        dec     d
        jr      nz,write_bytes
        ret

; A bit CF. From one OUT to the next it takes 400 T-states for a 0, 880 for a 1; before the first, about 50
; are spent by the caller. Keeps CF. Changes B.
write_bit:
        ld      b,25
        jr      nc,bit1
        ld      b,62
bit1:   djnz    bit1
        out     (0x50),a
        in      a,(0x58)                ; the time of two turns of a loop
        bit     3,a
        jr      z,bit_break
bit2:   ld      b,27
        jr      nc,bit3
        ld      b,64
bit3:   djnz    bit3
        out     (0x50),a
        ret
bit_break:
        ld      a,27
        ld      (BREAKKEY),a
        jr      bit2

; DE = CRC of the block in BLOCK with its bytes at HL. Changes AF, BC, HL.
crc:    push    hl
        ld      hl,BLOCK
        ld      de,0xFFFF
        ld      b,3
        call    crc1
        pop     hl
        ld      a,(BLOCK + 2)
        inc     a
        ld      b,a
crc1:   ld      a,(hl)                  ; B bytes (0: 256)
        inc     hl
        xor     d
        ld      d,a
        ld      c,8
crc2:   sla     e
        rl      d
        jr      nc,crc3
        ld      a,e
        xor     0x21
        ld      e,a
        ld      a,d
        xor     0x10
        ld      d,a
crc3:   dec     c
        jr      nz,crc2
        djnz    crc1
        ret

; Reads the next block into BLOCK and LINEBUF. CF = 1 when a break key was pressed; else Z when it is good, NZ
; when its CRC is wrong or it ended too soon. Changes AF, BC, DE, HL.
read_block:
        call    half
        ld      b,STEADY
read1:  ld      a,(BREAKKEY)
        or      a
        jr      nz,read_break
        call    half
        jr      c,read_block
        cp      GLITCH
        jr      c,read_block
        cp      LONG
        jr      nc,read_block
        djnz    read1
read2:  ld      a,(BREAKKEY)
        or      a
        jr      nz,read_break
        call    half                    ; the leader goes on to the first long half wave
        jr      c,read_block
        cp      GLITCH
        jr      c,read_block
        cp      LONG
        jr      c,read2
        call    half
        jr      c,read_block
        cp      LONG
        jr      c,read_block
        ld      hl,BLOCK
        ld      b,3
        call    read_bytes
        jr      c,read_bad
        ld      a,(BLOCK + 2)
        inc     a
        ld      b,a
        ld      hl,LINEBUF
        call    read_bytes
        jr      c,read_bad
        ld      hl,TCRC
        ld      b,2
        call    read_bytes
        jr      c,read_bad
        ld      hl,LINEBUF
        call    crc
        ld      hl,(TCRC)               ; high byte first
        ld      a,h
        xor     e
        ld      h,a
        ld      a,l
        xor     d
        or      h
        ret
read_break:
        scf
        ret
read_bad:
        or      1
        ret

; B bytes (0: 256) to HL, which is behind them then. CF = 1 when the tape fell silent. Changes AF, BC, DE.
read_bytes:
        push    bc
        ld      b,8
bytes1: call    half
        jr      c,bytes2
        ld      c,a
        call    half
        jr      c,bytes2
        add     a,c
        jr      c,bytes2
        cp      BITLONG
        ccf
        rl      (hl)
        djnz    bytes1
        inc     hl
        pop     bc
        djnz    read_bytes
        or      a
        ret
bytes2: pop     bc
        scf
        ret

; A = samples of the half wave at the level D, whose first one has been read; CF = 1 when there are more than
; 255. D = the new level. 45 T-states a sample. Changes F, E.
half:   ld      e,1
half1:  in      a,(0x59)
        and     0x20
        cp      d
        jr      nz,half2
        inc     e
        jr      nz,half1
        scf
        ret
half2:  ld      d,a
        ld      a,e
        or      a
        ret
