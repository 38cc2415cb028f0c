#pragma once

#include <sql.h>
#include <sqlext.h>

#include <utility>

namespace ZTkDb::detail {

// One ODBC handle of type `kType`, freed with its owner. A connection handle
// is disconnected first when it was connected.
template <SQLSMALLINT kType>
class OdbcHandle {
 public:
  OdbcHandle() = default;
  explicit OdbcHandle(SQLHANDLE h) : h_(h) {}
  ~OdbcHandle() { Reset(); }
  OdbcHandle(const OdbcHandle&) = delete;
  OdbcHandle& operator=(const OdbcHandle&) = delete;
  OdbcHandle(OdbcHandle&& other) noexcept
      : h_(std::exchange(other.h_, nullptr)), connected_(std::exchange(other.connected_, false)) {}
  OdbcHandle& operator=(OdbcHandle&& other) noexcept {
    if (this != &other) {
      Reset();
      h_ = std::exchange(other.h_, nullptr);
      connected_ = std::exchange(other.connected_, false);
    }
    return *this;
  }

  SQLHANDLE Get() const { return h_; }
  explicit operator bool() const { return h_ != nullptr; }
  void MarkConnected() { connected_ = true; }

  // Ends a connection's session; the driver frees its statements with it.
  // False when the driver refused (the session and its statements stay).
  bool Disconnect() noexcept {
    static_assert(kType == SQL_HANDLE_DBC);
    if (!h_ || !connected_) return false;
    if (!SQL_SUCCEEDED(SQLDisconnect(h_))) return false;
    connected_ = false;
    return true;
  }
  // Forgets a handle its owner has freed (a disconnect frees the
  // connection's statements).
  void Release() noexcept { h_ = nullptr; }

  void Reset() noexcept {
    if (h_ == nullptr) return;
    if constexpr (kType == SQL_HANDLE_DBC) {
      if (connected_) SQLDisconnect(h_);
    }
    SQLFreeHandle(kType, h_);
    h_ = nullptr;
    connected_ = false;
  }

 private:
  SQLHANDLE h_ = nullptr;
  bool connected_ = false;
};

using OdbcEnv = OdbcHandle<SQL_HANDLE_ENV>;
using OdbcDbc = OdbcHandle<SQL_HANDLE_DBC>;
using OdbcStmt = OdbcHandle<SQL_HANDLE_STMT>;

}  // namespace ZTkDb::detail
