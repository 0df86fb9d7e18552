FUNCTION_pass:
FUNCTION_right:
;;	FUNCTION_dropped:
;;	FUNCTION_index:
