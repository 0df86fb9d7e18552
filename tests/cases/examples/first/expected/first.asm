
DBI FILENAME first.st
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1


; ----------------------------------------------------------------------
; PROGRAM: main,	 file first.st,	 line 1
; ----------------------------------------------------------------------
PROGRAM_main:


	DBI POU_BEGIN

	
	LOCALSET 1 ; 4 bytes size

	; Initialization test
	PUSH (INT) [local+2] ; __ProgramInit
	PUSH (INT) 1234 
	CMP EQ(INT)
	JC LABEL0001
	;Local variable initialization

	PUSH (INT) 1234 
	POP (INT) [local+2] ; __ProgramInit
	LABEL0001:

	;Program body
DBI FILE 0 LINE 4
	PUSH(INT)	1
	POP(INT)	[local+0]	;x

	
	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: startup,	 file automatic declaration,	 line -1
; ----------------------------------------------------------------------
PROGRAM_startup:


	DBI POU_BEGIN

	LOCALSET 3 ; 0 bytes used
	;Call to global variable initialization
	JSR FUNCTION___GlobalInitialization__


	
	RTS
	DBI POU_END



; ----------------------------------------------------------------------
; PROGRAM: coldstart,	 file automatic declaration,	 line -1
; ----------------------------------------------------------------------
PROGRAM_coldstart:


	DBI POU_BEGIN

	LOCALSET 4 ; 0 bytes used
	;Call to global variable initialization
	JSR FUNCTION___GlobalInitialization__

	;Call to retain variable initialization
	JSR FUNCTION___RetainInitialization__


	
	RTS
	DBI POU_END


;------------------------------------------------------------------------
; FUNCTION: __GlobalInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___GlobalInitialization__:

	LOCALDATA 0

	;Global variable initialization

	;Global Variable List---------------------------------

	RTS

;------------------------------------------------------------------------
; FUNCTION: __RetainInitialization__
;          Automatically created by compiler.
; ------------------------------------------------------------------------
FUNCTION___RetainInitialization__:

	LOCALDATA 0

	;Retain variable initialization

	;Global Variable List---------------------------------

	RTS
