#include "host/desktop/fiche_commande.h"

#include <QAction>
#include <QCheckBox>
#include <QContextMenuEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QShortcut>
#include <algorithm>
#include <cmath>

#include "host/desktop/table_capteurs.h"

namespace zuma::host {
namespace {

QString NomDe(const Commande& commande) {
  return NomOuNuméro(commande.NomDeLaCommande(), commande.Key());
}

}  // namespace

FicheCommande::FicheCommande(CommandeRef commande, const Textes& textes, Verrou verrou,
                             FenêtreHôte& mère)
    : commande_(std::move(commande)),
      textes_(textes),
      verrou_(std::move(verrou)),
      mère_(mère),
      service_(new QCheckBox(SansTouche(NomDe(*commande_)), this)),
      consigne_(new QLineEdit(this)),
      applique_(new QPushButton(textes("Bouton applique"), this)),
      sortie_(new QLabel(this)),
      saturée_(new QLabel("▲ " + textes("Texte saturee"), this)),
      limites_(new QLabel(this)) {
  const QString clé = EnQt(commande_->Key());
  setObjectName("commande" + clé);
  service_->setObjectName("service" + clé);
  consigne_->setObjectName("consigne" + clé);
  applique_->setObjectName("applique" + clé);
  sortie_->setObjectName("sortieCommande" + clé);
  saturée_->setObjectName("saturee" + clé);
  limites_->setObjectName("limites" + clé);
  setFrameShape(QFrame::StyledPanel);
  Dispose();
  Branche();
  Rafraîchit();
}

void FicheCommande::Dispose() {
  const QString nom = NomDe(*commande_);
  service_->setToolTip(textes_("Aide service"));
  consigne_->setAccessibleName(textes_("Texte consigne") + " " + nom);
  consigne_->setToolTip(textes_("Aide consigne"));
  consigne_->setMaxLength(24);
  consigne_->setMinimumWidth(consigne_->fontMetrics().horizontalAdvance('0') * 9);
  applique_->setAccessibleName(applique_->text() + " " + nom);
  sortie_->setTextFormat(Qt::PlainText);  // names of the configuration are no markup
  sortie_->setWordWrap(true);
  saturée_->setStyleSheet(
      "background: #ffe09a; color: #402c00; font-weight: bold; padding: 0 4px;");
  limites_->setWordWrap(true);
  limites_->setVisible(static_cast<bool>(commande_->Canal()));
  const bool avecConsigne = !Recopie() && commande_->Canal();
  consigne_->setVisible(avecConsigne);
  applique_->setVisible(avecConsigne);
  auto* grille = new QGridLayout(this);
  grille->setContentsMargins(6, 4, 6, 4);
  grille->setVerticalSpacing(2);
  grille->addWidget(service_, 0, 0);
  grille->addWidget(consigne_, 0, 1);
  grille->addWidget(new QLabel(avecConsigne ? EnQt(commande_->UnitéEtalonnage()) : QString(), this),
                    0, 2);
  grille->addWidget(applique_, 0, 3);
  grille->addWidget(sortie_, 1, 0, 1, 4);
  grille->addWidget(limites_, 2, 0, 1, 2);
  grille->addWidget(saturée_, 2, 2, 1, 2);
  grille->setColumnStretch(0, 1);
}

void FicheCommande::Branche() {
  connect(service_, &QCheckBox::clicked, this, [this](bool enService) {
    if (!verrou_()) commande_->Enabled(enService);
    Abandonne();
  });
  // The button comes with the first key, and not with the next refresh of the window.
  connect(consigne_, &QLineEdit::textEdited, this, [this] {
    Signale(true, false);
    Rafraîchit();
  });
  connect(consigne_, &QLineEdit::returnPressed, this, [this] { Applique(); });
  connect(applique_, &QPushButton::clicked, this, [this] { Applique(); });
  auto* échappe = new QShortcut(Qt::Key_Escape, consigne_);
  échappe->setContext(Qt::WidgetShortcut);
  connect(échappe, &QShortcut::activated, this, [this] { Abandonne(); });
}

QString FicheCommande::Nombre(double valeur) const {
  const double échelle =
      std::max(std::abs(commande_->MiniCommande()), std::abs(commande_->MaxiCommande()));
  return textes_.Nombre(valeur, DécimalesPour(échelle));
}

// The machine answers what it took: a value beyond the limits comes back limited. What was not
// typed is a rounded value of the machine's own: written back it would move the output.
void FicheCommande::Applique() {
  if (!attente_) return;
  double valeur = 0;
  const bool nombre = LitNombre(consigne_->text().toStdString(), valeur) && std::isfinite(valeur);
  if (!nombre) {
    Signale(true, true);
    return;
  }
  if (!verrou_() && commande_->Enabled()) commande_->ValeurCouranteEnUnité(valeur);
  Abandonne();
}

void FicheCommande::Abandonne() {
  Signale(false, false);
  Rafraîchit();
}

void FicheCommande::Signale(bool attente, bool fautive) {
  attente_ = attente;
  const QString style = fautive   ? "background: #ffd6d6; color: #600010; font-weight: bold;"
                        : attente ? "background: #fff4c8; color: #302000; font-weight: bold;"
                                  : "";
  if (consigne_->styleSheet() != style) consigne_->setStyleSheet(style);
  consigne_->setToolTip(textes_(fautive   ? "Aide consigne fautive"
                                : attente ? "Aide consigne en attente"
                                          : "Aide consigne"));
}

void FicheCommande::Rafraîchit() {
  const bool libre = !verrou_();
  const bool relié = static_cast<bool>(commande_->Canal());
  service_->setChecked(commande_->Enabled());
  service_->setEnabled(libre && relié);
  MontreLaConsigne(libre && relié && commande_->Enabled());
  sortie_->setText(TexteDeSortie());
  saturée_->setVisible(commande_->SortieSaturée());
  limites_->setText(TexteDesLimites());
}

// What was typed and not applied is dropped by a stop, and by putting the command out of service:
// there it is given no set point, and reads its output.
void FicheCommande::MontreLaConsigne(bool commandable) {
  if (attente_ && !commandable) Signale(false, false);
  consigne_->setEnabled(commandable);
  applique_->setEnabled(commandable && attente_);
  const QString texte = Nombre(commande_->ValeurCouranteEnUnité());
  if (!attente_ && consigne_->text() != texte) consigne_->setText(texte);
}

QString FicheCommande::TexteDeSortie() const {
  if (!commande_->Canal()) return textes_("Commande sans canal");
  QString texte =
      textes_("Texte valeur") + " " +
      AvecUnité(Nombre(commande_->ValeurCouranteEnUnité()), commande_->UnitéEtalonnage()) + ", " +
      textes_.Nombre(commande_->ValeurCouranteEnPoints(), 0) + " " + textes_("Texte points");
  if (Recopie() && commande_->CapteurDeRecopie()) {
    texte += ", " + textes_("Texte recopie") + " " + NomDe(*commande_->CapteurDeRecopie());
  }
  if (commande_->MaintenueAuRepos()) texte += ", " + textes_("Texte tenue au repos");
  return texte;
}

QString FicheCommande::TexteDesLimites() const {
  return textes_("Texte limites") + " " +
         textes_.Limites(commande_->MiniCommande(), commande_->MaxiCommande(),
                         commande_->UnitéEtalonnage());
}

void FicheCommande::contextMenuEvent(QContextMenuEvent* demande) {
  if (!Recopie()) return;
  QMenu menu(this);
  menu.setObjectName("menuCommande");
  // A stop may fire while the menu stands.
  QAction* étalonne = menu.addAction(textes_("Geste etalonne"), this, [this] {
    if (!verrou_()) commande_->EtalonnageExterieur(&mère_);
  });
  étalonne->setEnabled(!verrou_());
  menu.exec(demande->globalPos());
}

}  // namespace zuma::host
