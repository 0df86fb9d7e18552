;;		DBI POU_END


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
