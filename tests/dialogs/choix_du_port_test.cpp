// The form that picks or finds the port of an instrument.
#include "dialogs/choix_du_port.h"

#include <gtest/gtest.h>

#include "outils/banc_instrument.h"

namespace zuma {
namespace {

class Instrument : public TesteurDePort {
 public:
  bool TestPort(const std::string& réglages) override {
    essayés.push_back(réglages);
    return réglages == bon;
  }
  std::string bon = "/dev/x,9600,N,8,1";
  std::vector<std::string> essayés;
};

TEST(LeChoixDuPort, EssaieChaqueCoupleJusquAuPremierBonOuJusquÀSaFermeture) {
  essai::FenêtresDEssai fenêtres;
  Instrument instrument;
  UTS_0107_Configuration feuille(fenêtres, instrument, {"1", "/dev/x"}, {"9600", "19200"});
  std::vector<std::string> affichés;
  fenêtres.événements = [&] {
    affichés.push_back(feuille.LblEtat);
    feuille.BtnAutoScan();  // an impatient operator
  };
  feuille.BtnAutoScan();
  EXPECT_EQ(instrument.essayés,
            (std::vector<std::string>{"1,9600,N,8,1", "1,19200,N,8,1", "/dev/x,9600,N,8,1"}));
  EXPECT_EQ(affichés, instrument.essayés) << "told before each try";
  EXPECT_EQ(feuille.LblEtat, "/dev/x,9600,N,8,1 : Find!");
  EXPECT_EQ(feuille.Settings(), instrument.bon);

  fenêtres.événements = [&] { feuille.BtnClose(); };
  feuille.BtnAutoScan();
  EXPECT_EQ(instrument.essayés.size(), 3U) << "a closed form tries no more";
  EXPECT_EQ(feuille.LblEtat, "");
}

}  // namespace
}  // namespace zuma
