#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/fenetres.h"

namespace zuma {

/// An instrument that can tell whether it is behind a port.
class TesteurDePort {
 public:
  virtual ~TesteurDePort() = default;
  /// Opens the port with these settings and waits about 100 ms for the instrument to show itself.
  /// False when the port cannot be opened or the instrument is not there. The port stays as tried.
  [[nodiscard]] virtual bool TestPort(const std::string& Settings_str) = 0;
};

/// A list of texts of which one may be selected.
struct ListeDeChoix {
  std::vector<std::string> textes;    ///< in the order shown
  std::optional<std::size_t> choisi;  ///< rank of the selected one; none
};

/// The form in which the operator picks the port and the speed of an instrument, or has them found
/// by trying all pairs. It knows no toolkit: a window paints what is public here, writes the two
/// selections and presses the two buttons.
class ChoixDuPort {
 public:
  /// The services and the instrument must outlive the form.
  ChoixDuPort(Fenêtres& fenêtres, TesteurDePort& instrument, std::vector<std::string> ports,
              std::vector<std::string> vitesses);
  virtual ~ChoixDuPort() = default;
  ChoixDuPort(const ChoixDuPort&) = delete;
  ChoixDuPort& operator=(const ChoixDuPort&) = delete;

  /// Name of the form, for the window that paints it.
  [[nodiscard]] virtual std::string_view Nom() const = 0;
  /// False once closed: the window that shows the form modally then returns.
  [[nodiscard]] bool Visible() const noexcept { return visible_; }
  /// Settings text of the selected port and speed; empty unless both lists have a selection.
  [[nodiscard]] std::string Settings() const;

  /// Tries each port with each speed, in the order of the lists, and stops at the first pair behind
  /// which the instrument is: the lists are then set to it. Windows live before each try; pressing
  /// again meanwhile does nothing, closing the form ends the search.
  void BtnAutoScan();
  /// Hides the form.
  void BtnClose() noexcept { visible_ = false; }

  /// Ports that can be picked.
  ListeDeChoix CmbListeCOM;
  /// Speeds that can be picked.
  ListeDeChoix CmbListeBaudrate;
  /// What the search is doing, or came to.
  std::string LblEtat;

 private:
  [[nodiscard]] bool Cherche();

  Fenêtres& fenêtres_;
  TesteurDePort& instrument_;
  bool visible_ = true;
  bool enRecherche_ = false;
};

/// The form of the CBR tester.
class UTS_0107_Configuration : public ChoixDuPort {
 public:
  using ChoixDuPort::ChoixDuPort;
  [[nodiscard]] std::string_view Nom() const override { return "UTS_0107_Configuration"; }
};

/// The form of the Gram balance.
class GRAM_Configuration : public ChoixDuPort {
 public:
  using ChoixDuPort::ChoixDuPort;
  [[nodiscard]] std::string_view Nom() const override { return "GRAM_Configuration"; }
};

}  // namespace zuma
