FUNCTION_dropped:
;;	FUNCTION_pass:
;;	FUNCTION_right:
