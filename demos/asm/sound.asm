'A sound routine: a tune that plays from the interrupt while the machine does something else.
'In the assembler's window: Compile, RUN, RUN CPU. Any key ends it.
'As a cassette file: quollasm sound.asm -o sound.cas

constr:  equ $C083       'calls of the system: prints the text at HL
keypoll: equ $C095       'NZ when a key has been pressed
gfxmode: equ $C09B       'mode A, clears the screen
ticks:   equ $0B04       'interrupts since the start
port5:   equ $0B02       'what the ports 5 and 6 hold
port6:   equ $0B03
inthook: equ $0B29       'called at the end of each interrupt

'BASIC's program: 10 CALL 10000
org 6639
db 8,10,0,$A1,7,$10,$27,0,0

org 10000
xor a
call @gfxmode
ld hl,@text
call @constr

ld hl,@tune
ld (@next),hl
di
ld hl,@play
ld (@inthook1),hl
ld a,$C3
ld (@inthook),a          'JP PLAY
ei

'The main program is free to do what it likes: here it only waits.
wait:
halt
call @keypoll
jr z,@wait

ld a,$C9                 'RET: the hook is empty again
ld (@inthook),a
call @silence
rst $0                   'a warm start: back to BASIC

inthook1: equ $0B2A

'Once in each frame: starts a note, or lets the one that sounds fade.
play:
ld hl,@left
dec (hl)
jr nz,@fade

ld hl,(@next)
newnote:
ld e,(hl)
inc hl
ld d,(hl)
inc hl
ld a,(hl)
inc hl
or a
jr nz,@begin
ld hl,@tune              'the end: once more
jr @newnote
begin:
ld (@next),hl
ld (@left),a
ld a,d
or e
jr z,@silence            'pitch 0 is a rest
ld a,e
out (4),a
ld a,(@port5)
and $C0
or $10                   'tone on, and the pitch's upper four bits
or d
ld (@port5),a
out (5),a
ld a,15
ld (@loud),a
jr @volume

fade:
ld a,(@loud)
or a
ret z
dec a
ld (@loud),a
volume:
add a,a
add a,a
ld e,a
ld a,(@port6)
and $C3
or e
ld (@port6),a
out (6),a
ret

silence:
ld a,(@port5)
and $EF                  'tone off
ld (@port5),a
out (5),a
xor a
ld (@loud),a
jr @volume

left:
db 1                     'frames until the next note
loud:
db 0                     '0 to 15
next:
dw 0                     'the next note's place

'Pitch, 4096 - 195312.5 / Hz, and frames. A word must stand alone in its line.
tune:
dw 3349                  'c
db 8
dw 3503                  'e
db 8
dw 3598                  'g
db 8
dw 3503                  'e
db 8
dw 3537                  'f
db 8
dw 3652                  'a
db 8
dw 3723                  'c'
db 8
dw 3652                  'a
db 8
dw 3598                  'g
db 8
dw 3701                  'h
db 8
dw 3763                  'd'
db 8
dw 3701                  'h
db 8
dw 3723                  'c'
db 16
dw 0                     'rest
db 8
dw 3598                  'g
db 8
dw 3800                  'e'
db 8
dw 3723                  'c'
db 8
dw 3598                  'g
db 8
dw 3503                  'e
db 8
dw 3537                  'f
db 8
dw 3652                  'a
db 8
dw 3598                  'g
db 8
dw 3537                  'f
db 8
dw 3503                  'e
db 8
dw 3431                  'd
db 8
dw 3598                  'g
db 8
dw 3431                  'd
db 8
dw 3349                  'c
db 24
dw 0                     'rest
db 8
dw 0
db 0                     'the end

text:
db "A tune from the interrupt. Press a key..."
db 0
