// Statements at the edges of what the assembler takes, most of them wrong in one place. "|" parts them, "~"
// is a line end within one and "^" a tab. BY is a small constant, WO an address.
#pragma once

namespace quoll::plain {

inline constexpr const char* kEdgeStatements =
    R"edge(DB 1.5|DB 2.5|DB 255.4|DB 255.5|DB -0.4|DB .5|DB 1E1|DB 1D1|DB 1e400|DB 1 2|DB &H10|DB $a,$B|
DB "a","b"|DB 5,"b"|DB "a"b|DB "a"b"|DW 1.5|DW 65535.5|DW 1E3|DW "a"|DW $ffff|DW $fffff|DS 2.5,1|
DS 1.5,1|DS 1E1,5|DS 2,1.5|DS 2,1E1|DS 2,255.4|DS 0.4,1|DS 0.6,1|DS 99999999999,1|DS 2,99999999999|
DS 99999999999|DS 2,|DS ,2|DS,2|DS 2,$|DS 2,$f|DS 2,$0ff|DS 2,$0fff|DS 2, $f|DS 2,^5|DS ^2,5|
DS 2,$5^|DS 2,$5 ^|DS 2,5'x|DS 2 ,5|DS +2,5|DS 1 0,5|DS 2,$1 2|ORG 10.7|ORG 65535.9|ORG 65536.1|
ORG 1E3|ORG -0.5|ORG -5|ORG $1 2|ORG $12 X|ORG $123 X|ORG 12 34|ORG +5|ORG &H10|ORG X|ORG  .5|
ORG 2147483648|PMEM=2.5|PMEM=255.4|PMEM=255.6|PMEM=-0.4|PMEM=1E1|PMEM=$B0X|PMEM=$00B0X|PMEM=$|PMEM=|
PMEM =5|PMEM=99999999999|X: EQU 12.5~LD A,@X|X: EQU 13.5~LD A,@X|X: EQU 12345678~LD A,@X|
X: EQU 123456789012~LD A,@X|X: EQU 1E1~LD A,@X|X: EQU 12345~LD HL,@X|X: EQU 123456~LD HL,@X|
X: EQU 1E~LD A,@X|X: EQU 1,2~LD A,@X|X:: EQU 5~LD A,@X:|: EQU 5~LD A,@|X: EQU 5: EQU 6|X: EQU  5|
X: EQU $ff~LD HL,@X|X: EQU $fffff~LD HL,@X|X: EQU $-1|X:EQU 5|X : EQU 5|:~JP @|INCBIN "|
INCBIN "Data.bin|INCBIN Data.bin"|INCBIN 'Data.bin'|INCBIN "Data.bin""|INCBIN ""Data.bin"|
INCBIN  "Data.bin"|INCBIN^"Data.bin"|INCBIN "Data.bin" 'c|INCBIN "Data.bin"'c|INCBIN "Da, ta.bin"|
INCBIN"Data.bin"|LD (IX+5),1.5|LD (IX+5),2.5|LD (IX+5),255.4|LD (IX+5),1E1|LD (IX+5),-0.4|
LD (IX+5),99999999999|LD (IX+5)|LD (IX+5),$5,$6|LD (IX+$5),$6,$|LD (IX+$5),$G|LD (IX+99999999999),5|
LD (IX+300),5|LD (IX+),@BY|LD (IX+),@BY)@WO|LD (IX+@BY),@WO|LD A,(IX+@BY)x|LD A,@BY+1|LD A,@BY |
LD A, @BY|LD A,@ BY|LD HL,@WO,5|LD HL,@WO$|LD HL,(@WO)(|LD HL,((@WO))|LD (@WO),SP|OUT (@BY),B|
IN B,(@BY)|JP @WO@WO|JP NZ, @WO|JP 7|JP $1234|JP $12345|JP $|JP (HL)5|JR @WO|JR 256|JR $FF|DJNZ 5|
DJNZ @END|RST $7|RST $10 |rst  $38|RST $38'x|AND @WO|XOR 5|LD IXH,@BY*|LD IXL,5*|LD IXL,$5*|
LD IXL, 5 *|RLC (IX+@BY)|RLC (IX+5)|LD B,RLC (IX+5)*|LD B,RLC (IX+5)|LD A,SET 7,(IX+5)*|
LD A,SET 8,(IX+5)*|LD A,SET 77,(IX+5)*|BIT 0,(IX+5)*|BIT 0,(IX+5)|BIT 0,A|BIT 8,A|SET 0,(HL)|
SET 10,A|RES 1,(IY+$7F)|IN (C)*|IN F,(C)*|IM 0/1*|IM 1*|OUT (C),0*|OUT (C),0|EX AF,AF'|EX AF,AF' 'x|
end of file|>|ED|FDCB|NOP 5|NOP5|NOP$5|CCF$FF|RET5|1 2 3|5|$5|@|@@|'| '|''|"|:|::|*int| *int|* INT|
*INT'x|*INT x|*RESET|*BREAK|DB "a^b"|DB "a  b"|DB "a"  |DB "a"^|DB "a" x|^^DB 5|^^DB "a"|  ^DB "a"|
DB^"a"|DB^^"a"|DB "a" |DB "a:|DB "a: EQU 5"|DB 5:|LD A,5:|A B:|NOP~NOP:~NOP:)edge";

}  // namespace quoll::plain
