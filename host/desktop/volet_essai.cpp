#include "host/desktop/volet_essai.h"

#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <utility>

#include "dialogs/qt/liste_de_choix.h"
#include "host/configuration.h"

namespace zuma::host {
namespace {

constexpr std::size_t kPointsDessinés = 400;

// Every so many points of the test, so that painting costs the same at its end as at its start.
template <class Abscisse>
Graphique::Segments Courbe(const std::vector<EssaiCompression::Point>& points,
                           Abscisse&& abscisse) {
  QList<QPointF> courbe;
  const std::size_t pas = points.size() / kPointsDessinés + 1;
  for (std::size_t i = 0; i < points.size(); i += pas) {
    courbe.append({abscisse(points[i]), points[i].contrainte});
  }
  if (!points.empty()) courbe.append({abscisse(points.back()), points.back().contrainte});
  return {courbe};
}

}  // namespace

VoletEssai::VoletEssai(Chassis& chassis, const linux_::Securite& sécurité, const Textes& textes,
                       Verrou verrou)
    : chassis_(chassis),
      sécurité_(sécurité),
      textes_(textes),
      verrou_(std::move(verrou)),
      vitesse_(new QDoubleSpinBox(this)),
      commence_(new QPushButton(textes("Bouton essai"), this)),
      interrompt_(new QPushButton(textes("Bouton interrompt"), this)),
      bilan_(new QLabel(this)),
      graphiques_{UnGraphique("graphiqueTemps", "Axe charge"),
                  UnGraphique("graphiqueDeformation", "Axe deformation")} {
  setObjectName("voletEssai");
  vitesse_->setObjectName("vitesseEssai");
  qt::SansMolette(*vitesse_);
  commence_->setObjectName("commenceEssai");
  interrompt_->setObjectName("interromptEssai");
  bilan_->setObjectName("bilanEssai");
  vitesse_->setLocale(textes.Locale());
  vitesse_->setRange(0.05, 5);
  vitesse_->setSingleStep(0.1);
  vitesse_->setValue(EssaiCompression::Réglages().vitesse);
  vitesse_->setSuffix(" MPa/s");
  bilan_->setWordWrap(true);
  Compose();
  connect(commence_, &QPushButton::clicked, this, [this] { Commence(); });
  connect(interrompt_, &QPushButton::clicked, this, [this] { Interrompt(); });
  Rafraîchit();
}

void VoletEssai::Compose() {
  auto* titre = new QLabel(textes_("Texte vitesse"), this);
  titre->setBuddy(vitesse_);
  auto* ligne = new QHBoxLayout;
  for (QWidget* widget : {static_cast<QWidget*>(titre), static_cast<QWidget*>(vitesse_),
                          static_cast<QWidget*>(commence_), static_cast<QWidget*>(interrompt_)}) {
    ligne->addWidget(widget);
  }
  ligne->addWidget(bilan_, 1);
  auto* courbes = new QHBoxLayout;
  for (Graphique* graphique : graphiques_) courbes->addWidget(graphique);
  auto* boîte = new QVBoxLayout(this);
  boîte->setContentsMargins(0, 0, 0, 0);
  boîte->addLayout(ligne);
  boîte->addLayout(courbes, 1);
}

Graphique* VoletEssai::UnGraphique(const char* nom, std::string_view abscisse) {
  auto* graphique = new Graphique(textes_, this);
  graphique->setObjectName(nom);
  graphique->AbscisseLibre(textes_(abscisse));
  graphique->Traces(std::array{Graphique::Trace{textes_("Trace contrainte"), "MPa"}});
  return graphique;
}

bool VoletEssai::Possible(Chassis& chassis, const linux_::Securite& sécurité) {
  try {
    const EssaiCompression essai(chassis, sécurité, {});
    return true;
  } catch (const MauvaisUsage&) {
    return false;
  }
}

void VoletEssai::Commence() {
  if (EnCours() || verrou_()) return;
  essai_ = std::make_unique<EssaiCompression>(
      chassis_, sécurité_, EssaiCompression::Réglages{.vitesse = vitesse_->value()});
  dessinés_ = 0;
  Rafraîchit();
}

void VoletEssai::Interrompt() {
  if (EnCours()) essai_->Interrompt();
}

void VoletEssai::AprèsLaPasse(double secondes) {
  if (!EnCours()) return;
  essai_->Observe(secondes);
  essai_->Agit();
}

void VoletEssai::Rafraîchit() {
  commence_->setEnabled(!EnCours() && !verrou_());
  vitesse_->setEnabled(!EnCours());
  interrompt_->setEnabled(EnCours() && !essai_->LaFin());
  const QString bilan = TexteDuBilan();
  if (bilan_->text() != bilan) bilan_->setText(bilan);
  if (isVisible() && essai_ && dessinés_ != essai_->Points().size()) Dessine();
}

void VoletEssai::Dessine() {
  const auto& points = essai_->Points();
  dessinés_ = points.size();
  const double début = points.empty() ? 0 : points.front().secondes;
  graphiques_[0]->Montre({Courbe(points, [&](const auto& p) { return p.secondes - début; })});
  graphiques_[1]->Montre({Courbe(points, [](const auto& p) { return p.déformation; })});
}

QString VoletEssai::TexteDuBilan() const {
  if (!essai_) return textes_("Essai aucun");
  const EssaiCompression::Résultat& r = essai_->LeRésultat();
  const auto fin = essai_->LaFin();
  QString texte = fin ? textes_("Fin " + std::string(Texte(*fin)))
                      : textes_("Phase " + std::string(essai_->Phase()));
  if (const auto& défaut = essai_->LeDéfaut()) {
    texte += "\n" + EnQt(défaut->capteur) + ": " +
             textes_("Defaut " + std::string(Texte(défaut->genre)));
  }
  texte += "\n" + textes_("Essai maximum") + " " + textes_.Nombre(r.forceMaximale, 2) + " kN, " +
           textes_.Nombre(r.contrainteMaximale, 2) + " MPa";
  if (fin) {
    texte += "\n" + textes_("Essai vitesse tenue") + " " + textes_.Nombre(r.vitesseTenue, 3) +
             " MPa/s, " + textes_("Essai duree") + " " + textes_.Nombre(r.durée, 1) + " s";
  }
  return texte;
}

}  // namespace zuma::host
