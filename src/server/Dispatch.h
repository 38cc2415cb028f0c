#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

#include "runtime/Raise.h"
#include "ztkdb/Variant.h"

namespace ZTkDb::server {

struct ClassInfo;

// Objects alive in the process (handed out and not yet released).
std::atomic<int64_t>& LiveObjects();

// An object the C interface hands out: the C++ object and its class table.
struct Object {
  explicit Object(const ClassInfo& c);
  virtual ~Object();
  virtual void* Get() = 0;
  const ClassInfo& cls;
};

template <typename T>
struct Boxed final : Object {
  Boxed(const ClassInfo& c, std::unique_ptr<T> v) : Object(c), value(std::move(v)) {}
  void* Get() override { return value.get(); }
  std::unique_ptr<T> value;
};

// What a member returns: a value, or an object (null = Nothing).
struct Out {
  Variant value;
  bool is_object = false;
  std::unique_ptr<Object> object;
};

using Args = std::vector<Variant>;  // positional; Empty = omitted

enum class Kind { kGet = 1, kPut = 2, kMethod = 3 };

struct Member {
  std::string name;
  Kind kind;
  int min_args;
  int max_args;
  std::function<Out(void* self, const Args& args)> invoke;
};

struct ClassInfo {
  std::string name;
  bool creatable;
  std::function<std::unique_ptr<Object>()> create;  // empty when not creatable
  std::vector<Member> members;
  const Member* Find(const std::string& member, Kind kind) const;
};

// The class table of a C++ class, registered by the class tables.
template <typename T>
const ClassInfo& ClassOf();

template <typename T>
std::unique_ptr<Object> Box(std::unique_ptr<T> value) {
  return std::make_unique<Boxed<T>>(ClassOf<T>(), std::move(value));
}

// ---- argument conversion ------------------------------------------------

template <typename T>
struct Arg;
template <>
struct Arg<int32_t> {
  static int32_t From(const Variant& v) { return v.ToLong(); }
};
template <>
struct Arg<int16_t> {
  static int16_t From(const Variant& v) { return v.ToInteger(); }
};
template <>
struct Arg<uint8_t> {
  static uint8_t From(const Variant& v) { return v.ToByte(); }
};
template <>
struct Arg<bool> {
  static bool From(const Variant& v) { return v.ToBool(); }
};
template <>
struct Arg<double> {
  static double From(const Variant& v) { return v.ToDouble(); }
};
template <>
struct Arg<Currency> {
  static Currency From(const Variant& v) { return v.ToCurrency(); }
};
template <>
struct Arg<Date> {
  static Date From(const Variant& v) { return v.ToDate(); }
};
template <>
struct Arg<std::string> {
  static std::string From(const Variant& v) { return v.ToString(); }
};
template <>
struct Arg<std::optional<int32_t>> {
  static std::optional<int32_t> From(const Variant& v) {
    if (v.IsEmpty()) return std::nullopt;
    return v.ToLong();
  }
};
// A string array travels as one text of comma-separated elements.
template <>
struct Arg<std::vector<std::string>> {
  static std::vector<std::string> From(const Variant& v) {
    std::vector<std::string> out;
    const std::string text = v.ToString();
    if (text.empty()) return out;
    size_t from = 0;
    for (size_t comma; (comma = text.find(',', from)) != std::string::npos; from = comma + 1) {
      out.push_back(text.substr(from, comma - from));
    }
    out.push_back(text.substr(from));
    return out;
  }
};
template <typename E>
requires std::is_enum_v<E>
struct Arg<E> {
  static E From(const Variant& v) { return static_cast<E>(v.ToLong()); }
};

// ---- results ------------------------------------------------------------

template <typename T>
Out Result(T&& value) {
  using V = std::decay_t<T>;
  Out out;
  if constexpr (std::is_enum_v<V>) {
    out.value = Variant(static_cast<int32_t>(value));
  } else if constexpr (requires { typename V::element_type; }) {
    out.is_object = true;
    if (value) out.object = Box(std::forward<T>(value));
  } else {
    out.value = Variant(V(value));
  }
  return out;
}

// ---- member builders ----------------------------------------------------

template <typename F>
struct FnTraits;
template <typename C, typename R, typename... A>
struct FnTraits<R (C::*)(A...)> {
  using Class = C;
  using Ret = R;
  using Params = std::tuple<std::decay_t<A>...>;
  static constexpr size_t kCount = sizeof...(A);
};
template <typename C, typename R, typename... A>
struct FnTraits<R (C::*)(A...) const> : FnTraits<R (C::*)(A...)> {};

template <typename O, typename F, size_t... I>
Out CallWith(void* self, F fn, const Args& args, const Args& defaults, std::index_sequence<I...>) {
  using T = FnTraits<F>;
  constexpr size_t n = T::kCount;
  auto pick = [&](size_t i) -> const Variant& {
    if (i < args.size() && !args[i].IsEmpty()) return args[i];
    if (i + defaults.size() < n) {
      detail::Raise(449, "ZTkDb.Dispatch",
                    "Argument not optional (argument " + std::to_string(i + 1) + ")");
    }
    return defaults[i + defaults.size() - n];
  };
  // The boxed object, whose class may derive from the member's (the cursor
  // members of the lists).
  typename T::Class& object = *static_cast<O*>(self);
  if constexpr (std::is_void_v<typename T::Ret>) {
    std::invoke(fn, object, Arg<std::tuple_element_t<I, typename T::Params>>::From(pick(I))...);
    return Out{};
  } else {
    return Result(std::invoke(fn, object,
                              Arg<std::tuple_element_t<I, typename T::Params>>::From(pick(I))...));
  }
}

// A method (or a parameterized property get): `defaults` are the values of
// its trailing optional parameters, an Empty entry meaning "omitted" (an
// optional<> parameter).
template <typename O, typename F>
Member Method(const char* name, F fn, Args defaults = {}, Kind kind = Kind::kMethod) {
  constexpr int n = static_cast<int>(FnTraits<F>::kCount);
  return Member{name, kind, n - static_cast<int>(defaults.size()), n,
                [fn, defaults](void* self, const Args& args) {
                  return CallWith<O>(self, fn, args, defaults,
                                     std::make_index_sequence<FnTraits<F>::kCount>{});
                }};
}

// A property getter (no arguments); overloads are told apart by shape.
template <typename O, typename C, typename T>
Member Get(const char* name, T (C::*get)() const) {
  return Member{name, Kind::kGet, 0, 0, [get](void* self, const Args&) {
                  const C& object = *static_cast<O*>(self);
                  return Result((object.*get)());
                }};
}

// A property setter.
template <typename O, typename C, typename T>
Member Put(const char* name, void (C::*set)(T)) {
  return Member{name, Kind::kPut, 1, 1, [set](void* self, const Args& args) {
                  C& object = *static_cast<O*>(self);
                  (object.*set)(Arg<std::decay_t<T>>::From(args.at(0)));
                  return Out{};
                }};
}

}  // namespace ZTkDb::server
