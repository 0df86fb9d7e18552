DBI FILENAME x\x01\x09y\x7F\x0Az
; PROGRAM: main,	 file a\x0ADBI FILETIME 1.st,	 line 1
PROGRAM_au\x01to:
