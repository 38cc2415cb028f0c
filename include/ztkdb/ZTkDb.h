/// \file
/// Everything a host needs: the public classes, types and enumerations.
/// C++ note: the cursor members BOF and EOF are spelled Bof() and Eof(),
/// because EOF is a macro of the C library.
#pragma once

/// \namespace ZTkDb
/// The library's C++ interface: the connection manager CTkDb, the records
/// (CAuftrag, CMeldung, CLeistung, CMaterial, CMsgOrderDokument), their lists,
/// and the types their members take and raise.

#include "ztkdb/CAuftrag.h"
#include "ztkdb/CAuftragListe.h"
#include "ztkdb/CLeistung.h"
#include "ztkdb/CLeistungListe.h"
#include "ztkdb/CMaterial.h"
#include "ztkdb/CMaterialListe.h"
#include "ztkdb/CMeldung.h"
#include "ztkdb/CMeldungListe.h"
#include "ztkdb/CMsgOrderDokument.h"
#include "ztkdb/CMsgOrderDokumentListe.h"
#include "ztkdb/CTkDb.h"
#include "ztkdb/Currency.h"
#include "ztkdb/Date.h"
#include "ztkdb/Enums.h"
#include "ztkdb/Error.h"
#include "ztkdb/MessageBox.h"
#include "ztkdb/RecordList.h"
#include "ztkdb/Recordset.h"
#include "ztkdb/Trace.h"
#include "ztkdb/Variant.h"
#include "ztkdb/Workspace.h"
