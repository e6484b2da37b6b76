10 A$="The quick brown fox jumps over the lazy dog"
20 P=INSTR(A$," ")
30 IF P=0 THEN R$=A$+R$:PRINT R$:END
40 R$=" "+LEFT$(A$,P-1)+R$:A$=MID$(A$,P+1):GOTO 20
