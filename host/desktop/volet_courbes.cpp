#include "host/desktop/volet_courbes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "dialogs/qt/liste_de_choix.h"
#include "host/desktop/etat_capteur.h"
#include "sensors/lecture.h"

namespace zuma::host {
namespace {

constexpr std::array<std::string_view, 3> kTextesDesEtendues{"Etendue 10 s", "Etendue 60 s",
                                                             "Etendue 10 min"};
constexpr std::array<int, 3> kGraduations{6, 7, 7};
constexpr int kEtendueDeDépart = 1;
constexpr double kPlancher = 1e-3;  // of a sensor's limits

}  // namespace

VoletCourbes::VoletCourbes(Chassis& chassis, const Textes& textes, const CourbesChoisies& choisies)
    : textes_(textes),
      choisies_(choisies),
      graphique_(new Graphique(textes, this)),
      étendue_(new QComboBox(this)),
      pause_(new QCheckBox(textes("Bouton pause"), this)) {
  setObjectName("voletCourbes");
  graphique_->setObjectName("graphiqueCourbes");
  étendue_->setObjectName("etendue");
  pause_->setObjectName("pause");
  for (const CapteurRef& capteur : *chassis.Capteurs()) suivis_.push_back({.capteur = capteur});
  for (const std::string_view clé : kTextesDesEtendues) étendue_->addItem(textes(clé));
  étendue_->setCurrentIndex(kEtendueDeDépart);
  qt::SansMolette(*étendue_);
  auto* titre = new QLabel(textes("Texte etendue"), this);
  titre->setBuddy(étendue_);
  auto* ligne = new QHBoxLayout;
  ligne->addWidget(titre);
  ligne->addWidget(étendue_);
  ligne->addWidget(pause_);
  ligne->addStretch();
  auto* boîte = new QVBoxLayout(this);
  boîte->setContentsMargins(0, 0, 0, 0);
  boîte->addLayout(ligne);
  boîte->addWidget(graphique_, 1);
  connect(étendue_, &QComboBox::currentIndexChanged, this, [this] { ChangeDEtendue(); });
  connect(pause_, &QCheckBox::toggled, this, [this] { àLaPause_ = secondes_; });
  ChangeDEtendue();
}

void VoletCourbes::Note(double secondes) {
  secondes_ = secondes;
  for (Suivi& suivi : suivis_) {
    const auto lecture = LectureDe(*suivi.capteur);
    for (Historique& historique : suivi.historiques) historique.Note(secondes, lecture);
  }
}

void VoletCourbes::ChangeDEtendue() {
  const auto rang = static_cast<std::size_t>(étendue_->currentIndex());
  graphique_->Abscisse(textes_("Axe temps"), -kEtendues[rang], kGraduations[rang]);
  Dessine();
}

void VoletCourbes::Rafraîchit() {
  if (!isVisible() || (pause_->isChecked() && TracesAJour())) return;
  Dessine();
}

// The unit of a sensor may change while it runs.
bool VoletCourbes::TracesAJour() const {
  if (montrées_ != choisies_) return false;
  for (std::size_t i = 0; i < suivis_.size(); ++i) {
    if (choisies_[i] && suivis_[i].unité != suivis_[i].capteur->UnitéEtalonnage()) return false;
  }
  return true;
}

void VoletCourbes::CommenceLesTraces() {
  std::vector<Graphique::Trace> traces;
  for (std::size_t i = 0; i < suivis_.size(); ++i) {
    if (!choisies_[i]) continue;
    const Capteur& capteur = *suivis_[i].capteur;
    suivis_[i].unité = capteur.UnitéEtalonnage();
    const double échelle =
        std::max(std::abs(capteur.MiniCapteurUnité()), std::abs(capteur.MaxiCapteurUnité()));
    traces.push_back({NomDe(capteur), suivis_[i].unité, kPlancher * échelle});
  }
  graphique_->Traces(traces);
  montrées_ = choisies_;
}

void VoletCourbes::Dessine() {
  if (!TracesAJour()) CommenceLesTraces();
  const auto rang = static_cast<std::size_t>(étendue_->currentIndex());
  const double maintenant = pause_->isChecked() ? àLaPause_ : secondes_;
  std::vector<Graphique::Segments> courbes;
  for (std::size_t i = 0; i < suivis_.size(); ++i) {
    if (choisies_[i]) courbes.push_back(suivis_[i].historiques[rang].Segments(maintenant));
  }
  graphique_->Montre(courbes);
}

}  // namespace zuma::host
