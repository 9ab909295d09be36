#pragma once

#include <concepts>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace zuma {

/// Name of a column. All the records that a table gives share its text: the rows of a frame have
/// some fifty thousand names and a few hundred different ones.
class NomDeColonne {
 public:
  ///@{
  /// A text that nobody shares yet.
  NomDeColonne(std::string texte) : texte_(std::make_shared<const std::string>(std::move(texte))) {}
  NomDeColonne(const char* texte) : NomDeColonne(std::string(texte)) {}
  ///@}

  ///@{
  /// The text; it lives as long as any copy of the name.
  [[nodiscard]] const std::string& Texte() const noexcept { return *texte_; }
  operator const std::string&() const noexcept { return *texte_; }
  operator std::string_view() const noexcept { return *texte_; }
  ///@}

  /// The same text, case included.
  template <std::convertible_to<std::string_view> T>
  friend bool operator==(const NomDeColonne& a, const T& b) noexcept {
    return std::string_view(a) == std::string_view(b);
  }

 private:
  std::shared_ptr<const std::string> texte_;
};

}  // namespace zuma
