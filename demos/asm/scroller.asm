'A line of text that runs round the screen, point by point.
'In the assembler's window: Compile, RUN, RUN CPU. Any key ends it.
'As a cassette file: quollasm scroller.asm -o scroller.cas

constr:  equ $C083       'calls of the system: prints the text at HL
locate:  equ $C08C       'cursor to row D, column E
keypoll: equ $C095       'NZ when a key has been pressed
gfxmode: equ $C09B       'mode A, clears the screen
port2:   equ $0B00       'what port 2 holds: written first, then the port
first:   equ $9B80       'first byte of text row 11: $8000 + 64 * 10 * 11

'BASIC's program: 10 CALL 10000
org 6639
db 8,10,0,$A1,7,$10,$27,0,0

org 10000
xor a                    '2 colours, 512 points in a row
call @gfxmode
ld de,$0B00
call @locate
ld hl,@text
call @constr

frame:
halt                     'until the interrupt below the picture
ld b,0
delay:
nop                      'and until the frame is over: the picture is made then,
nop                      'and must not find the text half moved
djnz @delay
ld a,$50
call @pages              'video RAM at $8000
call @turn
ld a,$70
call @pages
call @keypoll
jr z,@frame
rst $0                   'a warm start: back to BASIC

'Moves ten rows of points to the left. What leaves them comes back on the right.
turn:
ld hl,@first
ld c,10
row:
ld de,63
ld a,(hl)
add hl,de                'the row's last byte
rla                      'its leftmost point into the carry
ld b,64
byte:
rl (hl)
dec hl
djnz @byte
ld de,65                 'the next row's first byte
add hl,de
dec c
jr nz,@row
ret

pages:
ld (@port2),a
out (2),a
ret

'64 characters
text:
db "This line goes round and round... "
db "Árvíztűrő tükörfúrógép!  ***  "
db 0
