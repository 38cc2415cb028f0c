   
	select  *
from [T_Auftrag] -- comment with '15.11.2026'
