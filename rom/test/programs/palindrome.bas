10 FOR K=1 TO 4:READ A$:T$=""
20 FOR I=1 TO LEN(A$):C$=UCASE$(MID$(A$,I,1))
30 IF C$>="A" AND C$<="Z" THEN T$=T$+C$
40 NEXT
50 R$="":FOR I=LEN(T$) TO 1 STEP -1:R$=R$+MID$(T$,I,1):NEXT
60 IF T$=R$ THEN PRINT "YES "; ELSE PRINT "NO  ";
70 PRINT A$:NEXT
80 DATA "A man, a plan, a canal: Panama",Hello,Never odd or even,BASIC
