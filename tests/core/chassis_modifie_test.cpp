// A frame that is changed by whoever hears of it, in the middle of a walk over its objects.
#include <functional>

#include <gtest/gtest.h>

#include "outils/banc_logique.h"
#include "outils/cas.h"
#include "sim/collaborateurs.h"

namespace zuma {
namespace {

using essai::Cas;
using essai::Ligne;
using enum ENUM_ETAT_LOGIQUE;

struct FichiersÉcoutés : sim::FichiersEnMémoire {
  void AjouteBloc(std::string_view, std::span<const std::string>) override { réaction(); }
  std::function<void()> réaction;
};

// Two of each: commands that write a parameter, boards whose blocks fail (function by function, a
// bus, outputs whose port is gone), sensors beyond their limits, inputs that change. Each witness
// leaves its name in the trace; the first one of a name makes the gesture.
class Scène : public essai::BancLogique {
 public:
  using Geste = void (*)(Scène&);

  explicit Scène(Geste geste = nullptr, std::string_view premier = {}) {
    plateforme.fichiers = &fichiers;
    plateforme.ports = {};
    fichiers.réaction = Témoin("fichier");
    for (const char* clé : {"3", "4"}) AjouteCarte(clé, clé[0] == '4' ? "DrvModBus" : "");
    for (const std::int32_t n : {1, 2}) AjouteObjets(n);
    canal->ValeurCanal(1e6);
    CanalDe(14)->ValeurCanal(-1);
    timer->heure = 10e6;
    registre->réaction = Témoin("erreur");
    messages.réaction = Témoin("message");
    sécurité->réaction = Témoin("sécurité");
    geste_ = geste;
    premier_ = premier;
    trace.clear();
  }

  std::string trace;
  FichiersÉcoutés fichiers;

 private:
  void AjouteCarte(const char* clé, const char* driver) {
    const CarteRef carte = chassis.Cartes()->Add(clé);
    carte->TimerExact(timer);
    carte->ChargeErreur(registre);
    essai::LitCarte(*carte, driver, "");
    for (const char* bloc : {"1", "2"}) {
      essai::AjouteBloc(*carte, bloc,
                        {{"Driver", "DrvModBus"},
                         {"Type de Fonction", "Entrée Analogique"},
                         {"Nom de la Fonction", bloc},
                         {"ModBus - Fonction", "3"}},
                        {-1, 0}, timer, registre);
    }
    carte->Fonctions()->Item("1")->RafraichissementEnCours(true);
  }
  void AjouteObjets(std::int32_t n) {
    const std::string clé = std::to_string(n);
    Partage(n, "")->Abonne(Témoin("paramètre"));
    const auto commande = Lu<Commande>(
        essai::LigneDeCommande("Normale", {{"Paramètre", n}, {"Sortie Logique 1", "?"}}));
    chassis.Commandes()->Add(clé, commande);
    Lie(*commande);
    chassis.Capteurs()->Add(clé, Monté());
    const auto entrée = Lu<EntréeLogique>({{"Nom de l'Entrée Logique", "Porte"},
                                           {"Etat d'Activation", 1},
                                           {"Niveau d'Arrêt d'Urgence", "Aucun"},
                                           {"Touche", Nul{}},
                                           {"Canal", 14}});
    entrée->AbonneChange([t = Témoin("entrée")](ENUM_ETAT_LOGIQUE) { t(); });
    chassis.EntréesLogiques()->Add(clé, entrée);
    Lie(*entrée);
    const auto sortie = Lu<SortieLogique>({{"Index", n},
                                           {"Nom de la Sortie Logique", "Vanne"},
                                           {"Etat d'Activation", 1},
                                           {"Canal", n + 11}});
    chassis.SortiesLogiques()->Référence(sortie, clé);
    Lie(*sortie);
  }
  std::function<void()> Témoin(std::string_view nom) {
    return [this, nom] {
      trace.append(nom) += ' ';
      if (nom == premier_ && geste_ != nullptr) std::exchange(geste_, nullptr)(*this);
    };
  }

  Geste geste_ = nullptr;
  std::string_view premier_;
};

template <class Objets>
void Vide(Objets& objets) {
  for (const char* clé : {"1", "2", "3", "4"}) {
    try {
      objets.Remove(clé);
    } catch (const Echec&) {  // not in this collection
    }
  }
}
void VideTout(Scène& s) {
  Vide(*s.chassis.Cartes());
  Vide(*s.chassis.Commandes());
  Vide(*s.chassis.Capteurs());
  Vide(*s.chassis.EntréesLogiques());
  Vide(*s.chassis.SortiesLogiques());
}
void RemplaceTout(Scène& s) {
  s.chassis.Cartes({});
  s.chassis.Commandes({});
  s.chassis.Capteurs(Crée<Capteurs>(s.plateforme));
  s.chassis.EntréesLogiques({});
  s.chassis.SortiesLogiques({});
  s.chassis.Watchdog({});
}
void AjouteÀTout(Scène& s) {
  for (int i = 10; i < 40; ++i) {
    const std::string clé = std::to_string(i);
    s.chassis.Cartes()->Add(clé);
    s.chassis.Commandes()->Add(clé);
    s.chassis.Capteurs()->Add(clé);
    s.chassis.EntréesLogiques()->Add(clé);
    s.chassis.SortiesLogiques()->Add(clé);
  }
}
void DémonteLesCartes(Scène& s) {
  for (const CarteRef& carte : *s.chassis.Cartes()) {
    for (const FonctionRef& bloc : *carte->Fonctions()) {
      for (const CanalRef& canal : *bloc->Canals()) bloc->Canals()->Remove(canal->Key());
    }
    Vide(*carte->Fonctions());
    carte->Fonctions({});
    carte->FonctionSuivante({});
  }
}

// A pass and a stop end what they began on what they had; of what the other walks meet once the
// frame has changed, nothing is said but that all of it is there.
TEST(UnChassisModifié, FinitOuSurvitDansTousSesParcours) {
  using Marche = void (*)(Scène&);
  using Noms = std::vector<std::string_view>;  // who hears of something meanwhile
  const Marche passe = [](Scène& s) { s.chassis.MetàJour(); };
  const Marche arrêt = [](Scène& s) { s.chassis.DéclencheAU(); };
  const Marche départ = [](Scène& s) { s.chassis.Initialise(); };
  const Marche liens = [](Scène& s) {
    s.chassis.Lien(Crée<essai::BaseFixe>(), "1", s.sécurité, s.paramètres);
  };
  const Marche vidage = [](Scène& s) { s.chassis.AutoSave("ici"); };
  // Between two passes, nothing of the frame holds the board.
  const Marche sortie = [](Scène& s) {
    s.chassis.SortiesLogiques()->Item("1")->ValeurCourante(Actif);
  };
  for (const auto& [quoi, marche, finit, premiers] : Cas<const char*, Marche, bool, Noms>{
           {"passe", passe, true, {"paramètre", "erreur", "sécurité", "entrée"}},
           {"arrêt", arrêt, true, {"paramètre", "erreur"}},
           {"départ", départ, false, {"erreur", "paramètre"}},
           {"liens", liens, false, {"message"}},
           {"vidage", vidage, false, {"fichier"}},
           {"sortie", sortie, false, {"erreur"}}}) {
    Scène témoin;
    marche(témoin);
    for (const std::string_view premier : premiers) {
      for (const Scène::Geste geste : {&VideTout, &RemplaceTout, &AjouteÀTout, &DémonteLesCartes}) {
        SCOPED_TRACE(testing::Message() << quoi << " " << premier);
        Scène scène(geste, premier);
        marche(scène);
        EXPECT_NE(scène.trace.find(premier), std::string::npos);
        if (finit && geste != &DémonteLesCartes) {
          EXPECT_EQ(scène.trace, témoin.trace);
        }
      }
    }
  }
}

// A channel, a block and a board, each held when what it hung on has gone.
TEST(UnChassisModifié, NeLaissePasDeParentDisparu) {
  struct : essai::BancLogique {
  } banc;
  const auto cartes = banc.chassis.Cartes();
  const CanalRef canal = banc.CanalDe(10);
  const CanalRef autre = banc.CanalDe(12);
  const FonctionRef bloc = cartes->Item("2")->Fonctions()->Item("1");
  canal->Parent()->Canals()->Remove("10");
  Vide(*cartes->Item("1")->Fonctions());
  EXPECT_EQ(canal->Parent(), nullptr) << "taken out of a block that ended; the board lives";
  bloc->Canals({});
  cartes->Item("2")->Fonctions({});
  Vide(*cartes);
  EXPECT_EQ(bloc->Parent(), nullptr) << "taken out of a board that ended";
  EXPECT_EQ(autre->Parent(), bloc.Brut());
  autre->MetàJour();
  EXPECT_TRUE(banc.Dit("Erreur N°91 ")) << "its driver went with the board";
}

}  // namespace
}  // namespace zuma
