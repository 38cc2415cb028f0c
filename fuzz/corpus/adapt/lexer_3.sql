SELECT 'a'
'\''; DELETE FROM t; --'