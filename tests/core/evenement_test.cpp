// Handlers that change the list they stand in while they are called.
#include "base/evenement.h"

#include <memory>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include "outils/allocations.h"

namespace zuma {
namespace {

class UnEvènement : public testing::Test {
 protected:
  int Note(char c) {
    return évènement->Abonne([this, c](int) { trace += c; });
  }
  std::string Lève() {
    trace.clear();
    évènement->Lève(1);
    return trace;
  }
  std::unique_ptr<Evènement<int>> évènement = std::make_unique<Evènement<int>>();
  std::string trace;
};

TEST_F(UnEvènement, SupporteQueSesAbonnésChangentSaListe) {
  int moi = 0;
  int autre = 0;
  // Held by the handler alone: it must outlive its own removal.
  moi = évènement->Abonne([&, gardé = std::make_shared<std::string>("m")](int) {
    évènement->Désabonne(moi);
    évènement->Désabonne(autre);
    Note('n');
    trace += *gardé;
  });
  autre = Note('x');
  Note('z');
  EXPECT_EQ(Lève(), "mz") << "a new handler waits for the next event";
  const auto avant = essai::Allocations();
  EXPECT_EQ(Lève(), "zn");
  EXPECT_EQ(essai::Allocations(), avant);
}

TEST_F(UnEvènement, SupporteQuUnAbonnéLèveEncoreEtSeRetireDansLAppelIntérieur) {
  int moi = 0;
  int profondeur = 0;
  moi = évènement->Abonne([&](int) {
    trace += 'r';
    if (profondeur++ == 0) {
      évènement->Lève(2);
    } else {
      évènement->Désabonne(moi);
    }
    trace += '.';
  });
  Note('s');
  EXPECT_EQ(Lève(), "rr.s.s");
  EXPECT_EQ(Lève(), "s");
}

TEST_F(UnEvènement, SurvitÀLaDestructionDeSonPropriétaire) {
  évènement->Abonne([this, gardé = std::make_shared<char>('p')](int) {
    évènement.reset();
    trace += *gardé;
  });
  Note('x');
  EXPECT_EQ(Lève(), "p");
}

TEST_F(UnEvènement, AppelleTousLesAbonnésMalgréUnEchecEtRendLePremier) {
  évènement->Abonne([](int) { throw std::runtime_error("premier"); });
  évènement->Abonne([](int) { throw 2; });
  Note('a');
  EXPECT_THROW(Lève(), std::runtime_error);
  EXPECT_EQ(trace, "a");
}

}  // namespace
}  // namespace zuma
