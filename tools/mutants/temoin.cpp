// Linked to the tests of the mutated sources: tells which places each test reached, in
// $ZUMA_ATTEINTS, one line "test milliseconds place place ...".
#include <algorithm>
#include <cstdio>
#include <cstdlib>

#include <gtest/gtest.h>

#include "base/mutants.h"

namespace zuma_mutants {
namespace {

class Témoin final : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override { std::fill_n(atteints, kAuPlus, false); }
  void OnTestEnd(const testing::TestInfo& test) override {
    std::FILE* fichier = std::fopen(std::getenv("ZUMA_ATTEINTS"), "a");
    if (fichier == nullptr) return;
    std::fprintf(fichier, "%s.%s %lld", test.test_suite_name(), test.name(),
                 static_cast<long long>(test.result()->elapsed_time()));
    for (int i = 0; i < kAuPlus; ++i) {
      if (atteints[i]) std::fprintf(fichier, " %d", i);
    }
    std::fprintf(fichier, "\n");
    std::fclose(fichier);
  }
};

const bool posé = [] {
  if (std::getenv("ZUMA_ATTEINTS") != nullptr) {
    testing::UnitTest::GetInstance()->listeners().Append(new Témoin);
  }
  return true;
}();

}  // namespace
}  // namespace zuma_mutants
