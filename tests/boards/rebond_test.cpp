// Logic inputs whose contact moves between any two reads of one refresh.
#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "outils/banc_logique.h"
#include "sim/carte_acl8316.h"
#include "sim/cartes_pci.h"

namespace zuma {
namespace {

// What happens before each read of the machine.
using AvantLecture = std::function<void()>;

struct PortsQuiRebondissent : sim::BusPorts {
  std::uint8_t Inp(std::uint16_t port) override { return avant(), BusPorts::Inp(port); }
  std::uint16_t Inpw(std::uint16_t port) override { return avant(), BusPorts::Inpw(port); }
  std::uint32_t Inpd(std::uint16_t port) override { return avant(), BusPorts::Inpd(port); }
  AvantLecture avant = [] {};
};

struct PCIQuiRebondit : sim::BibliothèquePCISimulée {
  std::int16_t DI_ReadPort(std::uint16_t carte, std::uint16_t port, std::uint32_t& mot) override {
    return avant(), BibliothèquePCISimulée::DI_ReadPort(carte, port, mot);
  }
  AvantLecture avant = [] {};
};

struct Cas {
  const char* driver;
  std::shared_ptr<sim::CarteSimulée> jumeau;  // none for a PCI board
  const char* driverDeCarte = "";
  bool parFonction = true;
  std::uint32_t fermé = 0xFF;
};

// A frame with one board and one input, which stops it while its contact is open.
class UnContactQuiRebondit : public testing::Test, protected essai::BancLogique {
 protected:
  // Number of ways of opening, of 256, that 12 passes do not tell: the contact is open or closed at
  // each of eight reads, then open for good.
  int OuverturesPerdues(const Cas& c) {
    PCIQuiRebondit pci;
    PortsQuiRebondissent ports;
    AvantLecture& avant = c.jumeau ? ports.avant : pci.avant;
    plateforme.pci = &pci;
    plateforme.ports = &ports;
    if (c.jumeau) ports.Attache(0x220, 16, *c.jumeau);
    std::uint32_t& contacts =
        (c.jumeau ? c.jumeau->bornes : pci.Enfiche(BibliothèquePCI::kType9111, 0x220).bornes)
            .entréesLogiques;
    Chassis leChassis{plateforme};
    const CarteRef carte = leChassis.Cartes()->Add("1");
    carte->ChargeErreur(registre);
    carte->TimerExact(timer);
    const FonctionRef bloc = essai::AjouteBloc(*carte, "1",
                                               {{"Driver", c.driver},
                                                {"Type de Fonction", "Entrée Logique"},
                                                {"Nom de la Fonction", "Bloc"},
                                                {"Mise à Jour par Fonction", c.parFonction}},
                                               {0, 1}, timer, registre);
    essai::LitCarte(*carte, c.driverDeCarte, "", "220");
    carte->Initialise();
    const auto entrée = Lu<EntréeLogique>({{"Nom de l'Entrée Logique", "Porte"},
                                           {"Etat d'Activation", 1},
                                           {"Niveau d'Arrêt d'Urgence", "Désactivé"},
                                           {"Touche", Nul{}},
                                           {"Canal", 11}});
    entrée->Lien(sécurité, {}, traducteur, &leChassis);
    const auto passe = [&] {
      bloc->MetàJour();
      entrée->MetàJour();
    };

    int perdues = 0;
    for (unsigned motif = 0; motif < 256; ++motif) {
      avant = [&] { contacts = c.fermé; };
      for (int i = 0; i < 2; ++i) passe();
      sécurité->arrêts = 0;
      avant = [&, lectures = 0U]() mutable {
        const bool ouvert = lectures >= 8 || (motif >> lectures & 1U) != 0;
        contacts = ouvert ? ~c.fermé : c.fermé;
        ++lectures;
      };
      for (int i = 0; i < 12; ++i) passe();
      perdues += sécurité->arrêts == 0 ? 1 : 0;
    }
    return perdues;
  }
};

TEST_F(UnContactQuiRebondit, ArrêteLeChassisQuoiQuIlAitFaitEnSOuvrant) {
  sim::HorlogeVirtuelle horloge(1);
  const auto pet48 = std::make_shared<sim::CartePET48>();
  const Cas tous[] = {
      {"DrvPCL731_PCLD782B", std::make_shared<sim::CartePCL731>()},
      {"DrvPET48DIO_TB24P", pet48, "DrvPET48DIO"},
      {"DrvPET48DIO_TB24P", pet48, "DrvPET48DIO", false},
      {"DrvACL8316_ACLD9182", std::make_shared<sim::CarteACL8316>(horloge)},
      {"DrvA826PG_DB16P", std::make_shared<sim::CarteA826>(horloge)},
      {"DrvACL6126_ACLD9182", std::make_shared<sim::CarteSortiesParPaires>(6U, true)},
      {"DrvPET48DIO_PCLD782B", pet48, "DrvPET48DIO", true, 0},
      {"DrvPET48DIO_PCLD782B", pet48, "DrvPET48DIO", false, 0},
      {"DrvPCI9111HR/Vorlanex EL", nullptr, "DrvPCI9111HR"},
  };
  for (const Cas& c : tous) EXPECT_EQ(OuverturesPerdues(c), 0) << c.driver << c.parFonction;
  EXPECT_TRUE(registre->entrées.empty());
}

}  // namespace
}  // namespace zuma
