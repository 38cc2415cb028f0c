# Turns a text file into a C++ function returning its contents.
file(READ ${IN} content)
string(LENGTH "${content}" len)
set(chunks "")
set(pos 0)
# Raw string literals have a length limit per literal in some compilers; split.
while(pos LESS len)
  string(SUBSTRING "${content}" ${pos} 4000 piece)
  string(APPEND chunks "R\"ztkdb(${piece})ztkdb\"\n")
  math(EXPR pos "${pos} + 4000")
endwhile()
file(WRITE ${OUT} "namespace ZTkDb::detail {\nconst char* ${SYMBOL}() {\n  return\n${chunks};\n}\n}  // namespace ZTkDb::detail\n")
