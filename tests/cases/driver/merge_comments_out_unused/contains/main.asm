

; ----------------------------------------------------------------------
; FUNCTION: unused,	 file main.st,	 line 6
; ----------------------------------------------------------------------
;;	Not used
;;	FUNCTION_unused:
;;	
;;	
;;		DBI POU_BEGIN
;;	
;;		LOCALDATA 4
;;			;Variable (0): unused ((INT),VAR)
;;			;Variable (2): a ((INT),VAR_INPUT)
;;	
;;		;Read input parameters
;;		POP(INT) [local+2] ; a
;;	
;;		;Local variable initialization
;;	
;;		;Function body
;;	DBI FILE 0 LINE 9
;;		PUSH(INT)	[local+2]	;a
;;		JSR FUNCTION_Used
;;		POP(INT)	[local+0]	;unused
;;	
;;		;Return value
;;		PUSH	(INT) [local+0] ; unused
;;		RTS
;;	
;;		DBI POU_END



; ----------------------------------------------------------------------
; FUNCTION_BLOCK: idle,	 file main.st,	 line 11
; ----------------------------------------------------------------------
;;	Not used
;;	FUNCTION_idle:
;;	
;;	
;;		DBI POU_BEGIN
;;	
;;		LOCALDATA 8
;;		;Read input parameter
;;		DUP(UDINT)
;;		POP(UDINT)[local+0]	;FB_INSTANCE
;;	
