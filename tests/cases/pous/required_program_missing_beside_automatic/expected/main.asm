
DBI FILENAME main.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; PROGRAM: main,	 file main.st,	 line 1
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 2 bytes size

	; Initialization test
	PUSH (INT) [local+0] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0001
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+0] ; __ProgramInit
	LABEL0001:

	;Program body
DBI FILE 0 LINE 2


	
	RTS
	DBI POU_END

