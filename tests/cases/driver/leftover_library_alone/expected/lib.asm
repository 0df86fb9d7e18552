
DBI FILENAME lib.~st7
DBI FILETIME -989724672
DBI FILEVERSION 0
DBI COMPILERBUILDNUMBER 1

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
