SELECT 1 # '
; DELETE FROM t; -- '