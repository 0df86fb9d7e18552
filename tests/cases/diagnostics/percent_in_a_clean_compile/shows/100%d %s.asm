; PROGRAM: main,	 file 100%d %s.st,	 line 1
