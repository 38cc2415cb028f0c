#include "server/Dispatch.h"

#include <strings.h>

#include <atomic>

namespace ZTkDb::server {

std::atomic<int64_t>& LiveObjects() {
  static std::atomic<int64_t> count{0};
  return count;
}

Object::Object(const ClassInfo& c) : cls(c) { ++LiveObjects(); }
Object::~Object() { --LiveObjects(); }

const Member* ClassInfo::Find(const std::string& member, Kind kind) const {
  for (const Member& m : members) {
    if (m.kind == kind && strcasecmp(m.name.c_str(), member.c_str()) == 0) return &m;
  }
  return nullptr;
}

}  // namespace ZTkDb::server
