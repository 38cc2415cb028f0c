#!/usr/bin/env bash
# The shared library exports the public C++ classes and the ztk_* functions,
# and of its internals only what the ztk tool links against.
set -euo pipefail
lib=$1
symbols=$(nm -D --defined-only -C "$lib" | cut -d' ' -f3-)
# The internals the ztk tool links against (marked ZTKDB_TOOL), and nothing
# else of them.
tool='^ZTkDb::detail::(CreateModuleDatabase|CreateModuleSchemaOdbc|IsModuleFlag|ModuleFlags|LowerAscii|SqliteDialect|WorkspaceName|DbConnection::GetDatabase|DbConnectionRegistry::(Instance|Item)|RecordsetAccess::Make|RowSet::DecodeRow|ServerDialect::ColumnType|SqliteDatabase::Open|OdbcDatabase::Open)(\[abi:cxx11\])?\('
bad=$(grep -v -E '^(ztk_[a-z_]+|ZTkDb::[A-Z]|(typeinfo|typeinfo name|vtable) for ZTkDb::[A-Z])' <<<"$symbols" |
  grep -v -E "$tool" || true)
internal=$(grep -E '^ZTkDb::detail::|^ZTkDb::server::|for ZTkDb::(detail|server)::' <<<"$symbols" |
  grep -v -E "$tool" || true)
count=$(grep -c -E '^ztk_' <<<"$symbols" || true)
status=0
if [[ -n "$bad" ]]; then echo "exported but not public:"; echo "$bad" | head -20; status=1; fi
if [[ -n "$internal" ]]; then echo "internal names exported:"; echo "$internal" | head -20; status=1; fi
if [[ "$count" -lt 14 ]]; then echo "only $count ztk_ functions exported"; status=1; fi
for cls in CTkDb CAuftrag CMeldung CLeistung CMaterial CMsgOrderDokument CAuftragListe \
           CMeldungListe CLeistungListe CMaterialListe CMsgOrderDokumentListe ITestFixture; do
  grep -q "^ZTkDb::$cls::$cls()" <<<"$symbols" || { echo "ZTkDb::$cls not exported"; status=1; }
done
[[ $status -eq 0 ]] && echo "exports: $(wc -l <<<"$symbols") symbols, all public"
exit $status
