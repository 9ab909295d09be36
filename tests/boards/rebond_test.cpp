// Logic inputs whose contact moves between any two reads of one refresh.
#include <functional>
#include <memory>

#include <gtest/gtest.h>

#include "outils/banc_logique.h"
#include "outils/cas.h"
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

class UnContactQuiRebondit : public testing::Test, protected essai::BancLogique {};

// A frame with one board and one input, which stops it while its contact is open. In each of 256
// ways of opening, the contact is open or closed at each of eight reads, then open for good.
TEST_F(UnContactQuiRebondit, ArrêteLeChassisQuoiQuIlAitFaitEnSOuvrant) {
  using Jumeau = std::shared_ptr<sim::CarteSimulée>;  // none for a PCI board
  sim::HorlogeVirtuelle horloge(1);
  const Jumeau pet48 = std::make_shared<sim::CartePET48>();
  for (const auto& [driver, jumeau, driverDeCarte, parFonction, contactFermé] :
       essai::Cas<const char*, Jumeau, const char*, bool, std::uint32_t>{
           {"DrvPCL731_PCLD782B", std::make_shared<sim::CartePCL731>(), "", true, 0xFF},
           {"DrvPET48DIO_TB24P", pet48, "DrvPET48DIO", true, 0xFF},
           {"DrvPET48DIO_TB24P", pet48, "DrvPET48DIO", false, 0xFF},
           {"DrvACL8316_ACLD9182", std::make_shared<sim::CarteACL8316>(horloge), "", true, 0xFF},
           {"DrvA826PG_DB16P", std::make_shared<sim::CarteA826>(horloge), "", true, 0xFF},
           {"DrvACL6126_ACLD9182", std::make_shared<sim::CarteSortiesParPaires>(6U, true), "", true,
            0xFF},
           {"DrvPET48DIO_PCLD782B", pet48, "DrvPET48DIO", true, 0},
           {"DrvPET48DIO_PCLD782B", pet48, "DrvPET48DIO", false, 0},
           {"DrvPCI9111HR/Vorlanex EL", nullptr, "DrvPCI9111HR", true, 0xFF}}) {
    SCOPED_TRACE(testing::Message() << driver << parFonction);
    PCIQuiRebondit pci;
    PortsQuiRebondissent ports;
    AvantLecture& avant = jumeau ? ports.avant : pci.avant;
    plateforme.pci = &pci;
    plateforme.ports = &ports;
    if (jumeau) ports.Attache(0x220, 16, *jumeau);
    std::uint32_t& contacts =
        (jumeau ? jumeau->bornes : pci.Enfiche(BibliothèquePCI::kType9111, 0x220).bornes)
            .entréesLogiques;
    Chassis leChassis{plateforme};
    Carte& carte = *leChassis.Cartes()->Add("1");
    carte.ChargeErreur(registre);
    const FonctionRef bloc = essai::AjouteBloc(carte, "1",
                                               {{"Driver", driver},
                                                {"Type de Fonction", "Entrée Logique"},
                                                {"Mise à Jour par Fonction", parFonction}},
                                               {0, 1}, timer, registre);
    essai::LitCarte(carte, driverDeCarte, "", "220");
    carte.Initialise();
    const auto entrée = Lu<EntréeLogique>({{"Nom de l'Entrée Logique", "Porte"},
                                           {"Etat d'Activation", 1},
                                           {"Niveau d'Arrêt d'Urgence", "Désactivé"},
                                           {"Touche", Nul{}},
                                           {"Canal", 11}});
    entrée->Lien(sécurité, {}, traducteur, &leChassis);
    const auto passe = [&](int fois) {
      for (; fois > 0; --fois) {
        bloc->MetàJour();
        entrée->MetàJour();
      }
    };
    for (unsigned motif = 0; motif < 256; ++motif) {
      avant = [&contacts, fermé = contactFermé] { contacts = fermé; };
      passe(2);
      sécurité->arrêts = 0;
      avant = [&contacts, fermé = contactFermé, motif, lectures = 0U]() mutable {
        const bool ouvert = lectures >= 8 || (motif >> lectures & 1U) != 0;
        contacts = ouvert ? ~fermé : fermé;
        ++lectures;
      };
      passe(12);
      EXPECT_GT(sécurité->arrêts, 0) << motif;
    }
  }
  EXPECT_TRUE(registre->entrées.empty());
}

}  // namespace
}  // namespace zuma
