; Tape, in the extension ROM: files of blocks. docs/rom.md describes what stands on the tape.
        .include "memory.inc"
        .include "errors.inc"
        .globl  tape_save, tape_load, tape_verify
        .section .ext,"x"

        .equ    TADDR,   GFXVARS        ; word: next address
        .equ    TLEFT,   GFXVARS + 2    ; word: bytes still to come
        .equ    TMOST,   GFXVARS + 4    ; word: bytes that fit, or that there are to be verified
        .equ    TCRC,    GFXVARS + 6    ; word, in wave.s too
        .equ    TTYPE,   GFXVARS + 8
        .equ    TVERIFY, GFXVARS + 9    ; 1: compare, do not store
        .equ    TNEXT,   GFXVARS + 10   ; number of the block that is wanted
        .equ    TOURS,   GFXVARS + 11   ; 1 behind the header of the file that is wanted
        .equ    TTOLD,   GFXVARS + 12   ; 1 when the user has been told to rewind
        .equ    TSTART,  GFXVARS + 14   ; word
        .equ    TNAME,   GFXVARS + 16   ; 16 bytes: name wanted, filled up with 0

; A block: kind, number, count less 1, and up to 256 bytes. A header's bytes are type, name, start, length.
        .equ    BLOCK,   TAPEBUF        ; kind, number, count
        .equ    HEADER,  TAPEBUF + 3    ; of the file in work
        .equ    HNAME,   HEADER + 1
        .equ    HSTART,  HEADER + 17
        .equ    HLENGTH, HEADER + 19
        .equ    HSIZE,   21
        .equ    LEADER1, 3000           ; cycles before a header, before a block of data
        .equ    LEADER2, 300

; Saves DE bytes from HL under the name IX (ended by 0, 16 characters at most), type A. CF = 0, or CF = 1 and
; A = E_BREAK. Changes AF, BC, DE, HL.
tape_save:
        ld      (HEADER),a
        ld      (HSTART),hl
        ld      (TADDR),hl
        ld      (HLENGTH),de
        ld      (TLEFT),de
        ld      hl,0                    ; a tone could not end while a block is written
        ld      (SNDLEFT),hl
        sys     snd_off
        ld      hl,HNAME
        call    copy_name
        ld      hl,text_saving
        call    say_name
        call    motor_on
        xor     a
        ld      hl,BLOCK
        ld      (hl),'H'
        inc     hl
        ld      (hl),a
        inc     hl
        ld      (hl),HSIZE - 1
        inc     hl
        ld      de,LEADER1
save1:  call    write_block
        ei
        halt                            ; twice, so that a key held is seen
        halt
        ld      a,(BREAKKEY)
        or      a
        jp      nz,tape_break
        ld      hl,(TLEFT)
        ld      a,h
        or      l
        jp      z,tape_done
        ld      a,'.'
        rst     RST_OUT
        call    block_size              ; A = size less 1, BC = size
        or      a
        sbc     hl,bc
        ld      (TLEFT),hl
        ld      hl,BLOCK
        ld      (hl),'D'
        inc     hl
        inc     (hl)
        inc     hl
        ld      (hl),a
        ld      hl,(TADDR)
        push    hl
        add     hl,bc
        ld      (TADDR),hl
        pop     hl
        ld      de,LEADER2
        jr      save1

; Loads the file IX ("": the next one), which must be of type A: to HL, or where it was saved from when HL is
; 0; DE bytes fit. CF = 0, HL = where it begins, DE = its length; or CF = 1 and A = E_BREAK, E_FILE, E_MEMORY.
; tape_verify compares it with memory instead; DE is the length there. A = E_VERIFY when there is a
; difference. Change AF, BC, and DE, HL after errors. LINEBUF is used.
tape_verify:
        ld      c,1
        jr      load1
tape_load:
        ld      c,0
load1:  ld      (TTYPE),a
        ld      (TSTART),hl
        ld      (TMOST),de
        ld      a,c
        ld      (TVERIFY),a
        ld      hl,TNAME
        call    copy_name
        ld      hl,text_searching
        call    say
        call    motor_on
load2:  call    read_block
        jp      c,tape_break
        jr      nz,load2                ; not for us as long as it is no good
        call    is_header
        jr      nz,load2
        ld      hl,LINEBUF
        ld      de,HEADER
        ld      bc,HSIZE
        ldir
        ld      hl,text_found
        call    say_name
        ld      hl,TNAME
        ld      a,(hl)
        or      a
        jr      z,load3
        ld      de,HNAME
        ld      b,16
        call    compare
        jr      nz,load2
load3:  ld      a,(TTYPE)
        ld      hl,HEADER
        cp      (hl)
        ld      a,E_FILE
        jp      nz,load_fails
        ld      hl,(TSTART)
        ld      a,h
        or      l
        jr      nz,load4
        ld      hl,(HSTART)
        ld      (TSTART),hl
load4:  ld      (TADDR),hl
        ld      hl,(TMOST)
        ld      de,(HLENGTH)
        ld      (TLEFT),de
        ld      a,(TVERIFY)
        or      a
        sbc     hl,de
        jr      z,load5                 ; just as long is good for both
        ccf
        adc     a,a                     ; bit 0: it fits; not 0 or 1: verifying
        dec     a
        jr      z,load5
        inc     a
        ld      a,E_MEMORY
        jp      z,load_fails
        ld      a,E_VERIFY
        jp      load_fails
load5:
        ld      hl,1
        ld      (TNEXT),hl              ; TNEXT = 1
        ld      a,l
        ld      (TOURS),a
        dec     a
        ld      (TTOLD),a

; The blocks of data, in order. One that is bad or missing is waited for, as the user may rewind the tape.
data1:  ld      hl,(TLEFT)
        ld      a,h
        or      l
        jp      z,load_done
data2:  call    read_block
        jp      c,tape_break
        jp      nz,data_bad
        call    is_header
        jr      nz,data3
        ld      hl,LINEBUF
        ld      de,HEADER
        ld      b,HSIZE
        call    compare
        ld      a,1
        jr      z,data4
        xor     a
data4:  ld      (TOURS),a
        xor     a
        ld      (TTOLD),a
        jp      data2
data3:  ld      a,(TOURS)
        or      a
        jr      z,data2
        ld      a,(TNEXT)
        ld      hl,BLOCK + 1
        cp      (hl)
        jp      c,data_bad              ; the one that is wanted has gone by
        jp      nz,data2
        ld      hl,(TLEFT)
        call    block_size
        ld      a,(BLOCK + 2)
        inc     a
        cp      c
        jp      nz,data_bad
        or      a
        sbc     hl,bc
        ld      (TLEFT),hl
        ld      hl,TNEXT
        inc     (hl)
        ld      hl,LINEBUF
        ld      de,(TADDR)
        ld      a,(TVERIFY)
        or      a
        jr      nz,data5
        ldir
        jr      data6
data5:  ld      b,c                     ; 256 is 0 in both
        call    compare
        ld      a,E_VERIFY
        jp      nz,load_fails
data6:  ld      (TADDR),de
        xor     a
        ld      (TTOLD),a
        ld      a,'.'
        rst     RST_OUT
        jp      data1
data_bad:
        ld      hl,TTOLD
        ld      a,(hl)
        or      a
        jp      nz,data2
        inc     (hl)
        ld      hl,text_again
        call    say
        jp      data2

load_fails:
        scf
        jr      tape_end
tape_break:
        xor     a
        ld      (BREAKKEY),a
        ld      a,E_BREAK
        jr      load_fails
load_done:
tape_done:
        or      a
tape_end:
        push    af
        ld      a,13
        rst     RST_OUT
        ld      c,0
        call    motor
        pop     af
        ld      hl,(TSTART)
        ld      de,(HLENGTH)
        ret

; The motor is bit 6 of port 5. Change AF, C.
motor_on:
        ld      c,0x40
motor:  di
        ld      a,(PORT5)
        and     0xBF
        or      c
        ld      (PORT5),a
        out     (5),a
        ei
        ret

; BC = size of the next block, 1 to 256, when HL bytes are left; A = size less 1. Changes F.
block_size:
        ld      bc,256
        ld      a,h
        or      a
        jr      nz,size1
        ld      b,a
        ld      c,l
size1:  ld      a,c
        dec     a
        ret

; Name IX to HL, 16 bytes filled up with 0. Changes AF, B, HL.
copy_name:
        push    ix
        ld      b,16
name1:  ld      a,(ix+0)
        ld      (hl),a
        inc     hl
        or      a
        jr      z,name2                 ; its end counts for the rest
        inc     ix
name2:  djnz    name1
        pop     ix
        ret

; Z when the B bytes (0: 256) at HL and DE are the same; DE is behind them then. Changes AF, B, DE, HL.
compare:
        ld      a,(de)
        cp      (hl)
        ret     nz
        inc     de
        inc     hl
        djnz    compare
        ret

; Z when the block read is a header.
is_header:
        ld      a,(BLOCK)
        cp      'H'
        ret

; Text at HL to the screen, in a row of its own; with the name of the header and a new row behind it. The texts
; are in this ROM. Change AF, B, HL.
say_name:
        call    say
        ld      hl,HNAME
        ld      b,16
say1:   ld      a,(hl)
        or      a
        jr      z,say2
        rst     RST_OUT
        inc     hl
        djnz    say1
say2:   ld      a,13
        rst     RST_OUT
        ret
say:    ld      a,(CURCOL)
        or      a
        ld      a,13
        jr      z,say3
        rst     RST_OUT
say3:   ld      a,(hl)
        or      a
        ret     z
        rst     RST_OUT
        inc     hl
        jr      say3

text_saving:
        .asciz  "Saving "
text_searching:
        .asciz  "Searching\r"
text_found:
        .asciz  "Found "
text_again:
        .asciz  "Bad block: rewind the tape\r"
