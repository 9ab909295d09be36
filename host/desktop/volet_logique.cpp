#include "host/desktop/volet_logique.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zuma::host {
namespace {

struct EtatLogique {
  std::string_view clé;
  const char* lampe;
  const char* couleur;
};

const EtatLogique& Etat(ENUM_ETAT_LOGIQUE état) {
  static constexpr EtatLogique kActif{"Etat actif", "●", "#1b8a3a"};
  static constexpr EtatLogique kInactif{"Etat inactif", "○", "#606060"};
  static constexpr EtatLogique kInconnu{"Etat inconnu", "?", "#a05a00"};
  if (état == ENUM_ETAT_LOGIQUE::Actif) return kActif;
  return état == ENUM_ETAT_LOGIQUE::Inactif ? kInactif : kInconnu;
}

// Set only when it changes: laying out text on each refresh costs passes.
template <class T>
void MetLeTexte(T& widget, const QString& texte) {
  if (widget.text() != texte) widget.setText(texte);
}

// A titled group of the pane, with its grid.
QGridLayout& Groupe(QVBoxLayout& boîte, const QString& titre) {
  auto* groupe = new QGroupBox(titre);
  boîte.addWidget(groupe);
  auto* grille = new QGridLayout;
  groupe->setLayout(grille);
  return *grille;
}

}  // namespace

VoletLogique::VoletLogique(Chassis& chassis, const Textes& textes, Verrou verrou)
    : chassis_(chassis), textes_(textes), verrou_(std::move(verrou)) {
  setObjectName("voletLogique");
  auto* contenu = new QWidget;
  auto* boîte = new QVBoxLayout(contenu);
  boîte->setContentsMargins(0, 0, 0, 0);
  AjouteLeWatchdog(*boîte);
  AjouteLesEntrées(*boîte);
  AjouteLesSorties(*boîte);
  boîte->addStretch();
  setWidget(contenu);
  Rafraîchit();
}

void VoletLogique::AjouteLesEntrées(QVBoxLayout& boîte) {
  QGridLayout& grille = Groupe(boîte, textes_("Titre entrees"));
  for (const EntréeLogiqueRef& entrée : *chassis_.EntréesLogiques()) {
    auto* étiquette = new QLabel;
    étiquette->setObjectName("entree" + EnQt(entrée->Key()));
    étiquette->setTextFormat(Qt::RichText);
    const int rang = static_cast<int>(entrées_.size());
    grille.addWidget(étiquette, rang / 2, rang % 2);
    entrées_.emplace_back(entrée, étiquette);
  }
}

void VoletLogique::AjouteLesSorties(QVBoxLayout& boîte) {
  QGridLayout& grille = Groupe(boîte, textes_("Titre sorties"));
  for (const SortieLogiqueRef& sortie : *chassis_.SortiesLogiques()) {
    auto* bouton = new QPushButton;
    bouton->setObjectName("sortie" + EnQt(sortie->Key()));
    bouton->setCheckable(true);
    connect(bouton, &QPushButton::clicked, this, [this, s = sortie.Brut()](bool enfoncé) {
      if (!verrou_()) {
        s->ValeurCourante(enfoncé ? ENUM_ETAT_LOGIQUE::Actif : ENUM_ETAT_LOGIQUE::Inactif);
      }
      Rafraîchit();
    });
    const int rang = static_cast<int>(sorties_.size());
    grille.addWidget(bouton, rang / 2, rang % 2);
    sorties_.emplace_back(sortie, bouton);
  }
}

void VoletLogique::AjouteLeWatchdog(QVBoxLayout& boîte) {
  watchdog_ = new QCheckBox;
  watchdog_->setObjectName("watchdog");
  connect(watchdog_, &QCheckBox::clicked, this, [this](bool enService) {
    if (!verrou_()) chassis_.Watchdog()->Enabled(enService);
    Rafraîchit();
  });
  boîte.addWidget(watchdog_);
}

void VoletLogique::Rafraîchit() {
  const bool libre = !verrou_();
  for (const auto& [entrée, étiquette] : entrées_) {
    const EtatLogique& état = Etat(entrée->ValeurCourante());
    MetLeTexte(*étiquette,
               QStringLiteral("<span style='color:%1'>%2</span> %3: <b>%4</b>")
                   .arg(état.couleur, état.lampe,
                        NomOuNuméro(entrée->NomDeEntréeLogique(), entrée->Key()).toHtmlEscaped(),
                        textes_(état.clé)));
  }
  for (const auto& [sortie, bouton] : sorties_) {
    const EtatLogique& état = Etat(sortie->ValeurCourante());
    bouton->setChecked(sortie->ValeurCourante() == ENUM_ETAT_LOGIQUE::Actif);
    bouton->setEnabled(libre);
    MetLeTexte(*bouton, QString(état.lampe) + " " +
                            SansTouche(NomOuNuméro(sortie->NomDeLaSortieLogique(), sortie->Key())) +
                            ": " + textes_(état.clé));
  }
  MontreLeWatchdog(libre);
}

void VoletLogique::MontreLeWatchdog(bool libre) {
  const Watchdog& chien = *chassis_.Watchdog();
  const bool présent = chien.SortiePulse() || chien.Adresse() != 0;
  watchdog_->setChecked(chien.Enabled());
  watchdog_->setEnabled(libre && présent);
  QString texte = textes_("Texte watchdog") + ": " +
                  textes_(!présent          ? "Watchdog absent"
                          : chien.Enabled() ? "Watchdog en service"
                                            : "Watchdog a l'arret");
  if (présent && chien.Temps() != 0) texte += ", " + textes_.Nombre(chien.Temps(), 2) + " s";
  MetLeTexte(*watchdog_, texte);
}

}  // namespace zuma::host
