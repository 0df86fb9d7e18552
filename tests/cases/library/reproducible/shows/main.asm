DBI FILETIME -962799935
; FUNCTION: lib,	 file FirmwareLibrary.~st0,	 line 1
