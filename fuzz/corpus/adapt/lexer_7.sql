SELECT 1 --x'
; DELETE FROM t; -- '