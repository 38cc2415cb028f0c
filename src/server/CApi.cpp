#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include "server/Classes.h"
#include "ztkdb/MessageBox.h"
#include "ztkdb/Trace.h"
#include "ztkdb/ztkdb.h"

using ZTkDb::Variant;
using ZTkDb::server::Args;
using ZTkDb::server::ClassInfo;
using ZTkDb::server::Kind;
using ZTkDb::server::Member;
using ZTkDb::server::Object;
using ZTkDb::server::Out;

namespace {

struct LastError {
  int32_t number = 0;
  std::string source;
  std::string description;
};
LastError& Last() {
  thread_local LastError last;
  return last;
}

int32_t Fail(long number, std::string source, std::string description) {
  LastError& last = Last();
  last.number = static_cast<int32_t>(number);
  last.source = std::move(source);
  last.description = std::move(description);
  return last.number;
}

// Runs an entry point's body: whatever goes wrong becomes a status and the
// thread's last error; nothing is thrown across the C boundary.
template <typename F>
int32_t Guarded(F&& body) {
  try {
    body();
    return 0;
  } catch (const ZTkDb::Error& e) {
    return Fail(e.Number() == 0 ? 5 : e.Number(), e.Source(), e.Description());
  } catch (const std::bad_alloc&) {
    return Fail(7, "ZTkDb", "Out of memory");
  } catch (const std::exception& e) {
    return Fail(51, "ZTkDb", std::string("Internal error: ") + e.what());
  }
}

Object* Unwrap(ztk_handle h, const char* what) {
  if (!h) ZTkDb::detail::Raise(91, "ZTkDb", std::string("Object variable not set (") + what + ")");
  return reinterpret_cast<Object*>(h);
}

ztk_handle Wrap(std::unique_ptr<Object> o) { return reinterpret_cast<ztk_handle>(o.release()); }

Variant ToVariant(const ztk_value& v) {
  switch (v.type) {
    case ZTK_EMPTY: return Variant();
    case ZTK_NULL: return Variant::Null();
    case ZTK_INT16: return Variant(v.v.i16);
    case ZTK_INT32: return Variant(v.v.i32);
    case ZTK_DOUBLE: return Variant(v.v.d);
    case ZTK_CURRENCY: return Variant(ZTkDb::Currency::FromScaled(v.v.cy));
    case ZTK_DATE: return Variant(ZTkDb::Date(v.v.date));
    case ZTK_STRING: return Variant(std::string(v.v.s ? v.v.s : ""));
    case ZTK_BOOL: return Variant(v.v.b != 0);
    case ZTK_BYTE: return Variant(v.v.by);
    case ZTK_OBJECT: break;
  }
  ZTkDb::detail::Raise(13, "ZTkDb", "Type mismatch (no member takes this kind of value)");
}

char* CopyText(const std::string& s) {
  char* copy = static_cast<char*>(std::malloc(s.size() + 1));
  if (!copy) throw std::bad_alloc();
  std::memcpy(copy, s.c_str(), s.size() + 1);
  return copy;
}

void Store(Out&& out, ztk_value* result) {
  if (!result) return;  // the object, if any, is released with `out`
  ztk_value v{};
  if (out.is_object) {
    v.type = ZTK_OBJECT;
    v.v.obj = out.object ? Wrap(std::move(out.object)) : nullptr;
    *result = v;
    return;
  }
  const Variant& x = out.value;
  switch (x.Type()) {
    case ZTkDb::vtEmpty: v.type = ZTK_EMPTY; break;
    case ZTkDb::vtNull: v.type = ZTK_NULL; break;
    case ZTkDb::vtInteger:
      v.type = ZTK_INT16;
      v.v.i16 = x.ToInteger();
      break;
    case ZTkDb::vtLong:
      v.type = ZTK_INT32;
      v.v.i32 = x.ToLong();
      break;
    case ZTkDb::vtDouble:
      v.type = ZTK_DOUBLE;
      v.v.d = x.ToDouble();
      break;
    case ZTkDb::vtCurrency:
      v.type = ZTK_CURRENCY;
      v.v.cy = x.ToCurrency().Scaled();
      break;
    case ZTkDb::vtDate:
      v.type = ZTK_DATE;
      v.v.date = x.ToDate().Value();
      break;
    case ZTkDb::vtString:
      v.type = ZTK_STRING;
      v.v.s = CopyText(x.ToString());
      break;
    case ZTkDb::vtBoolean:
      v.type = ZTK_BOOL;
      v.v.b = x.ToBool() ? 1 : 0;
      break;
    case ZTkDb::vtByte:
      v.type = ZTK_BYTE;
      v.v.by = x.ToByte();
      break;
  }
  *result = v;
}

const Member& Lookup(const Object& o, const char* member, std::initializer_list<Kind> kinds) {
  if (!member) ZTkDb::detail::Raise(5, "ZTkDb", "Invalid procedure call (no member name)");
  for (Kind k : kinds) {
    if (const Member* m = o.cls.Find(member, k)) return *m;
  }
  ZTkDb::detail::Raise(
      438, "ZTkDb." + o.cls.name,
      "Object doesn't support this property or method (" + o.cls.name + "." + member + ")");
}

void CheckArity(const Object& o, const Member& m, int32_t argc) {
  if (argc < m.min_args || argc > m.max_args) {
    ZTkDb::detail::Raise(450, "ZTkDb." + o.cls.name,
                         "Wrong number of arguments or invalid property assignment (" + o.cls.name +
                             "." + m.name + " takes " + std::to_string(m.min_args) +
                             (m.max_args != m.min_args ? " to " + std::to_string(m.max_args) : "") +
                             ", got " + std::to_string(argc) + ")");
  }
}

}  // namespace

extern "C" {

int32_t ztk_create(const char* class_name, ztk_handle* out) {
  return Guarded([&] {
    if (!out) ZTkDb::detail::Raise(5, "ZTkDb", "Invalid procedure call (no place for the handle)");
    *out = nullptr;
    const std::string name = class_name ? class_name : "";
    const std::string prefix = "ZTkDb.";
    const ClassInfo* cls = nullptr;
    if (name.size() > prefix.size() &&
        strncasecmp(name.c_str(), prefix.c_str(), prefix.size()) == 0) {
      cls = ZTkDb::server::FindClass(name.substr(prefix.size()));
    }
    if (!cls || !cls->creatable) {
      ZTkDb::detail::Raise(429, "ZTkDb",
                           "ActiveX component can't create object: no class '" + name +
                               "' (names are \"ZTkDb.\" + a public class, e.g. ZTkDb.CAuftrag)");
    }
    *out = Wrap(cls->create());
  });
}

int32_t ztk_release(ztk_handle object) {
  return Guarded([&] { delete reinterpret_cast<Object*>(object); });
}

int32_t ztk_get(ztk_handle object, const char* member, ztk_value* result) {
  return Guarded([&] {
    if (result) *result = ztk_value{};
    Object* o = Unwrap(object, member ? member : "?");
    const Member& m = Lookup(*o, member, {Kind::kGet});
    CheckArity(*o, m, 0);
    Store(m.invoke(o->Get(), Args{}), result);
  });
}

int32_t ztk_put(ztk_handle object, const char* member, const ztk_value* value) {
  return Guarded([&] {
    Object* o = Unwrap(object, member ? member : "?");
    const Member& m = Lookup(*o, member, {Kind::kPut});
    if (!value) ZTkDb::detail::Raise(5, "ZTkDb", "Invalid procedure call (no value)");
    m.invoke(o->Get(), Args{ToVariant(*value)});
  });
}

int32_t ztk_call(ztk_handle object, const char* member, int32_t argc, const ztk_value* argv,
                 ztk_value* result) {
  return Guarded([&] {
    if (result) *result = ztk_value{};
    Object* o = Unwrap(object, member ? member : "?");
    const Member& m = Lookup(*o, member, {Kind::kMethod, Kind::kGet});
    // Trailing optional arguments may be left out (or passed as ZTK_EMPTY).
    CheckArity(*o, m, argc);
    Args args;
    for (int32_t i = 0; i < argc; ++i) args.push_back(ToVariant(argv[i]));
    Store(m.invoke(o->Get(), args), result);
  });
}

void ztk_value_clear(ztk_value* value) {
  if (!value) return;
  if (value->type == ZTK_STRING) std::free(const_cast<char*>(value->v.s));
  if (value->type == ZTK_OBJECT) delete reinterpret_cast<Object*>(value->v.obj);
  *value = ztk_value{};
}

int32_t ztk_last_error(int32_t* number, const char** source, const char** description) {
  const LastError& last = Last();
  if (number) *number = last.number;
  if (source) *source = last.source.c_str();
  if (description) *description = last.description.c_str();
  return last.number;
}

int32_t ztk_set_message_sink(ztk_message_sink sink, void* user_data) {
  return Guarded([&] {
    if (!sink) return ZTkDb::SetMessageSink({});
    ZTkDb::SetMessageSink([sink, user_data](const ZTkDb::MessageBoxCall& box) {
      sink(box.text.c_str(), box.title.c_str(), box.critical ? 1 : 0, user_data);
    });
  });
}

int32_t ztk_set_box_sink(ztk_box_sink sink, void* user_data) {
  return Guarded([&] {
    if (!sink) return ZTkDb::SetMessageSink({});
    ZTkDb::SetMessageSink([sink, user_data](const ZTkDb::MessageBoxCall& box) {
      const ztk_message_box call{box.text.c_str(), box.title.c_str(), box.critical ? 1 : 0,
                                 box.member.c_str(), static_cast<int32_t>(box.number)};
      sink(&call, user_data);
    });
  });
}

int32_t ztk_set_trace(ztk_trace_sink sink, void* user_data) {
  return Guarded([&] {
    if (!sink) return ZTkDb::SetStatementTrace({});
    ZTkDb::SetStatementTrace([sink, user_data](const ZTkDb::StatementTrace& t) {
      sink(t.text.c_str(), t.engine.c_str(), t.bound ? 1 : 0, t.milliseconds, t.rows, user_data);
    });
  });
}

int32_t ztk_can_unload(void) { return ZTkDb::server::LiveObjects() == 0 ? 1 : 0; }

int32_t ztk_class_count(void) {
  return static_cast<int32_t>(ZTkDb::server::CreatableClasses().size());
}

const char* ztk_class_name(int32_t index) {
  const auto& classes = ZTkDb::server::CreatableClasses();
  if (index < 0 || static_cast<size_t>(index) >= classes.size()) return nullptr;
  return classes[static_cast<size_t>(index)]->name.c_str();
}

int32_t ztk_member_count(const char* class_name) {
  const ClassInfo* cls = ZTkDb::server::FindClass(class_name ? class_name : "");
  return cls ? static_cast<int32_t>(cls->members.size()) : -1;
}

int32_t ztk_member_info(const char* class_name, int32_t index, const char** name, int32_t* kind,
                        int32_t* min_args, int32_t* max_args) {
  return Guarded([&] {
    const ClassInfo* cls = ZTkDb::server::FindClass(class_name ? class_name : "");
    if (!cls)
      ZTkDb::detail::Raise(429, "ZTkDb",
                           std::string("No class '") + (class_name ? class_name : "") + "'");
    if (index < 0 || static_cast<size_t>(index) >= cls->members.size()) {
      ZTkDb::detail::RaiseStandard(9, "ZTkDb");
    }
    const Member& m = cls->members[static_cast<size_t>(index)];
    if (name) *name = m.name.c_str();
    if (kind) *kind = static_cast<int32_t>(m.kind);
    if (min_args) *min_args = m.min_args;
    if (max_args) *max_args = m.max_args;
  });
}

const char* ztk_class_of(ztk_handle object) {
  return object ? reinterpret_cast<Object*>(object)->cls.name.c_str() : nullptr;
}

}  // extern "C"
