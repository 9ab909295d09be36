// Messages of the library as boxes, and the end of an application before its windows.
#include "qt/banc_qt.h"

namespace zuma::essai {
namespace {

TEST(LesMessagesQt, MontrentLeTexteTelQuelEtAttendentLaRéponse) {
  qt::MessagesQt messages(EnAnglais());
  QStringList vu;
  Répondra(vu);
  messages.Montre("<b>5 < 6</b>", {"Capteur", "12", "Force"});
  EXPECT_EQ(vu, (QStringList{"Capteur 12 Force", "<b>5 < 6</b>", ""}));
}

// In a process of its own, which checks its memory like any other at its end.
TEST(LesFenêtresQt, SurviventALApplication) {
  const auto survit = [] {
    auto fenêtres = std::make_unique<qt::FenêtresQt>(EnAnglais());
    const auto& feuille = *fenêtres->FeuilleDuConditionneur();
    fenêtres->FeuilleDuConditionneur()->Montre(*fenêtres, nullptr);
    const bool montrée = feuille.Chargée() && FenêtresAvec("LampeInitialise").size() == 1;
    qApp->~QApplication();
    try {
      fenêtres->FeuilleDuConditionneur()->Montre(*fenêtres, nullptr);
    } catch (const Echec& e) {
      fenêtres.reset();
      std::exit(montrée && e.NuméroErreur() == 91 ? 0 : 1);
    }
    std::exit(2);
  };
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(survit(), testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace zuma::essai
