#pragma once

#include "platform/linux/traducteur.h"

namespace zuma::host {

/// Translator of a frame whose window speaks another language than the first one. The words that
/// a specimen's parameters hold stay in the first language: they stand in a file that all hosts
/// read, and a frame recognises them in the language of its translator alone.
class TraducteurDuChassis final : public ZED_Traduction {
 public:
  [[nodiscard]] std::string LangueCourante() const override { return textes_.LangueCourante(); }
  void LangueCourante(std::string langue) override { textes_.LangueCourante(std::move(langue)); }
  [[nodiscard]] std::vector<std::string> Langues() const override { return textes_.Langues(); }
  [[nodiscard]] std::string Traduit(std::string_view clé, std::string_view défaut,
                                    std::string_view section) const override;

 private:
  linux_::Traducteur textes_;
  linux_::Traducteur mots_;  ///< stays in the first language
};

/// The translator in a language, by its name or the beginning of it, as in "en"; the first one
/// without. Throws `MauvaisUsage` with those that are known.
[[nodiscard]] Ref<ZED_Traduction> TraducteurEn(const std::string& demandée);

}  // namespace zuma::host
