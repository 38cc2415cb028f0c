// The C interface's type information against the C++ headers it serves: a
// member added to a class without its dispatch entry (or the reverse) fails
// here.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>

#include "ztkdb/ztkdb.h"

namespace {

// "Name kind" for each public member a class header declares (Bof/Eof as
// BOF/EOF), read from the header text between the class line and its
// private/protected part.
std::set<std::string> HeaderMembers(const std::string& cls, const std::string& header) {
  std::ifstream in(std::string(ZTKDB_SOURCE_DIR) + "/include/ztkdb/" + header);
  std::stringstream text;
  text << in.rdbuf();
  std::string all = std::regex_replace(text.str(), std::regex("//[^\n]*"), "");
  all = all.substr(all.find("class ZTKDB_API " + cls));
  // The class body at depth 1, inline function bodies folded to ';', up to
  // its private or protected part.
  std::string body;
  int depth = 0;
  for (char c : all.substr(all.find('{'))) {
    if (c == '{') {
      ++depth;
      continue;
    }
    if (c == '}') {
      if (--depth == 1) body += ';';
      if (depth == 0) break;
      continue;
    }
    if (depth == 1) body += c;
  }
  for (const char* end : {"private:", "protected:"}) {
    const size_t at = body.find(end);
    if (at != std::string::npos) body = body.substr(0, at);
  }
  std::set<std::string> out;
  const std::regex decl(R"(^\s*(?:public:)?\s*(.*?)\b(\w+)\((.*)\)\s*(const)?\s*(=\s*\w+)?\s*$)");
  std::stringstream statements(body);
  for (std::string st; std::getline(statements, st, ';');) {
    std::replace(st.begin(), st.end(), '\n', ' ');
    std::smatch m;
    if (!std::regex_match(st, m, decl)) continue;
    const std::string ret = m[1], name = m[2], params = m[3];
    if (name == cls || name.starts_with("operator") || ret.find("operator") != std::string::npos ||
        m[5].matched || ret.find('~') != std::string::npos ||
        ret.find("friend") != std::string::npos) {
      continue;
    }
    const std::string shown = name == "Bof" ? "BOF" : name == "Eof" ? "EOF" : name;
    std::string kind = "call";
    if (m[4].matched && params.empty())
      kind = "get";
    else if (ret.find("void") != std::string::npos && params.find(" value") != std::string::npos &&
             params.find(',') == std::string::npos)
      kind = "put";
    out.insert(shown + " " + kind);
  }
  return out;
}

std::set<std::string> TypeInfoMembers(const std::string& cls) {
  std::set<std::string> out;
  for (int32_t i = 0; i < ztk_member_count(cls.c_str()); ++i) {
    const char* name = nullptr;
    int32_t kind = 0, lo = 0, hi = 0;
    EXPECT_EQ(ztk_member_info(cls.c_str(), i, &name, &kind, &lo, &hi), 0);
    // Parameterized property gets are called like methods.
    const bool get = kind == ZTK_PROPERTY_GET && hi == 0;
    out.insert(std::string(name) + (get ? " get" : kind == ZTK_PROPERTY_PUT ? " put" : " call"));
  }
  return out;
}

}  // namespace

TEST(ComponentServer, TypeInformationMatchesTheHeaders) {
  ASSERT_EQ(ztk_class_count(), 12);
  for (int32_t i = 0; i < ztk_class_count(); ++i) {
    const std::string cls = ztk_class_name(i);
    SCOPED_TRACE(cls);
    std::set<std::string> expected = HeaderMembers(cls, cls + ".h");
    if (cls.ends_with("Liste")) {
      for (const auto& m : HeaderMembers("RecordList", "RecordList.h")) expected.insert(m);
    }
    EXPECT_EQ(TypeInfoMembers(cls), expected);
  }
  EXPECT_EQ(TypeInfoMembers("Workspace"), HeaderMembers("Workspace", "Workspace.h"));
  EXPECT_EQ(ztk_member_count("CNichtDa"), -1);
}

TEST(ComponentServer, ObjectsLiveUntilReleasedInAnyOrder) {
  EXPECT_EQ(ztk_can_unload(), 1);
  ztk_handle a = nullptr, b = nullptr, c = nullptr;
  ASSERT_EQ(ztk_create("ZTkDb.ITestFixture", &a), 0);
  ASSERT_EQ(ztk_create("ZTkDb.CMsgOrderDokumentListe", &b), 0);
  ASSERT_EQ(ztk_create("ZTKDB.CTKDB", &c), 0);
  EXPECT_EQ(ztk_member_count(ztk_class_of(a)), 0);
  EXPECT_EQ(ztk_can_unload(), 0);
  ztk_release(b);
  ztk_release(a);
  EXPECT_EQ(ztk_can_unload(), 0);
  ztk_release(c);
  EXPECT_EQ(ztk_can_unload(), 1);
  EXPECT_EQ(ztk_release(nullptr), 0);

  ztk_handle none = nullptr;
  EXPECT_EQ(ztk_create("CAuftrag", &none), 429);  // the "ZTkDb." prefix is part of the name
  int32_t number = 0;
  const char* description = nullptr;
  ztk_last_error(&number, nullptr, &description);
  EXPECT_EQ(number, 429);
  EXPECT_NE(std::string(description).find("CAuftrag"), std::string::npos);
}
