10 READ A$,B$:A$=A$+" "+B$+" "
20 P=INSTR(A$," "):IF P=0 THEN PRINT R$:END
30 W$=LEFT$(A$,P-1):A$=MID$(A$,P+1)
40 IF R$="" THEN R$=W$:GOTO 20
50 IF LEN(R$)+LEN(W$)+1>30 THEN PRINT R$:R$=W$ ELSE R$=R$+" "+W$
60 GOTO 20
70 DATA the machine prints as many words as fit in a row of thirty
80 DATA characters and then begins another one until no word is left
