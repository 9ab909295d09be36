#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/collaborateurs.h"
#include "platform/fenetres.h"
#include "platform/liaison_serie.h"

namespace zuma {

/// What the maintenance form shows of a digital conditioner, of either class.
class ConditionneurAffiché {
 public:
  /// One state of the module.
  struct Drapeau {
    std::string_view nom;  ///< key of its caption
    bool levé = false;     ///< it is raised
  };
  /// The nine states of a module, in the order of the form.
  using Drapeaux = std::array<Drapeau, 9>;
  /// Channels of a module.
  static constexpr std::int32_t kNombreDeValeurs = 3;

  ConditionneurAffiché() = default;
  ConditionneurAffiché(const ConditionneurAffiché&) = delete;
  ConditionneurAffiché& operator=(const ConditionneurAffiché&) = delete;
  /// Takes the object off the form that shows it.
  virtual ~ConditionneurAffiché();

  /// Its port; Nothing while it has none.
  [[nodiscard]] virtual Ref<PortInstrument> PortAffiché() const = 0;
  /// The module answers and has been set up.
  [[nodiscard]] virtual bool InitialiséAffiché() const = 0;
  /// Its states now.
  [[nodiscard]] virtual Drapeaux DrapeauxAffichés() const = 0;
  /// Value of channel `index`, from 0.
  [[nodiscard]] virtual double ValeurAffichée(std::int32_t index) const = 0;

 private:
  friend class FeuilleConditionneurNumerique;
  FeuilleConditionneurNumerique* feuille_ = nullptr;
};

/// Maintenance form of the digital conditioners, without a toolkit: a window paints what stands
/// here, calls `Timer` every `kPériode` and the buttons, and goes away when `Chargée` turns false.
/// The host makes one, with its translator, and gives it out through `Fenêtres`. Form and shown
/// object may end in either order.
class FeuilleConditionneurNumerique {
 public:
  static constexpr double kPériode = 0.2;  ///< seconds between two refreshes of the display

  /// Captions of the form.
  enum class Element : std::uint8_t {
    Titre,
    CadreCommunication,
    CadreEtatModule,
    CadreValeurs,
    DétailsCOM,
    PortTrouvé,
    Initialisé,
    DétailsModule,
    ValeurDuCanal,
    BoutonInitialise,
    BoutonQuitter,
    BoutonRetryConnection
  };
  /// How many captions there are.
  static constexpr std::size_t kNombreDElements = 12;

  /// Colour of the lamp.
  enum class Lampe : std::uint8_t { Rouge, Verte };

  /// What changes while the form is shown.
  struct Affichage {
    std::string com;                            ///< the port and its settings
    Lampe lampe = Lampe::Rouge;                 ///< green once the module is initialised
    ConditionneurAffiché::Drapeaux drapeaux{};  ///< states of the module
    /// Values of the three channels.
    std::array<std::string, ConditionneurAffiché::kNombreDeValeurs> valeurs;
  };

  /// A missing translator leaves the defaults and the keys.
  explicit FeuilleConditionneurNumerique(Ref<ZED_Traduction> traducteur)
      : traducteur_(std::move(traducteur)) {}
  FeuilleConditionneurNumerique(const FeuilleConditionneurNumerique&) = delete;
  FeuilleConditionneurNumerique& operator=(const FeuilleConditionneurNumerique&) = delete;
  ~FeuilleConditionneurNumerique() { Lâche(); }

  /// Takes the object to show, in the place of any other.
  void Reçoit(ConditionneurAffiché& module);
  /// Words the form, makes it owned by `mère` and gives it its window.
  void Montre(Fenêtres& fenêtres, FenêtreHôte* mère);
  /// The periodic refresh of the display.
  void Timer();

  /// Opens the port again.
  void BtnRetryConnection();
  /// The button exists, with its text, and no action is attached: the module starts by itself.
  void BtnInitialise() {}
  /// Unloads the form.
  void BtnQuitter() { Décharge(); }

  /// Caption of an element, in the language of the translator.
  [[nodiscard]] const std::string& Texte(Element élément) const {
    return textes_[static_cast<std::size_t>(élément)];
  }
  /// What is to be painted now.
  [[nodiscard]] const Affichage& LAffichage() const noexcept { return affichage_; }
  /// Window that owns the form; null for none.
  [[nodiscard]] FenêtreHôte* Mère() const noexcept { return mère_; }
  /// False before it is shown, once it is left, and once the object that it shows is gone.
  [[nodiscard]] bool Chargée() const noexcept { return chargée_; }

 private:
  friend class ConditionneurAffiché;
  void Lâche() noexcept;
  void Décharge() noexcept;

  Ref<ZED_Traduction> traducteur_;
  ConditionneurAffiché* module_ = nullptr;
  FenêtreHôte* mère_ = nullptr;
  bool chargée_ = false;
  std::array<std::string, kNombreDElements> textes_;
  Affichage affichage_;
};

}  // namespace zuma
