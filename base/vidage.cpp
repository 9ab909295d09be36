#include "base/vidage.h"

#include <array>
#include <charconv>

#include "base/objet.h"

namespace zuma {
namespace {

constexpr std::size_t kLargeur = 60;  // of the banner

std::string Hexadécimal(std::int32_t nombre) {
  std::array<char, 8> chiffres{};
  constexpr int kBase = 16;
  const auto fin =
      std::to_chars(chiffres.begin(), chiffres.end(), static_cast<std::uint32_t>(nombre), kBase);
  std::string texte(chiffres.begin(), fin.ptr);
  for (char& c : texte) {
    if (c >= 'a') c = static_cast<char>(c - 'a' + 'A');
  }
  return texte;
}

}  // namespace

BlocDeVidage::BlocDeVidage(std::size_t retrait, std::string_view titre) : retrait_(retrait, ' ') {
  const std::string étoiles(kLargeur, '*');
  const std::string vide = "*" + std::string(kLargeur - 2, ' ') + "*";
  for (const std::string_view ligne : {std::string_view(étoiles), std::string_view(vide), titre,
                                       std::string_view(vide), std::string_view(étoiles)}) {
    Texte({}, ligne);
  }
}

void BlocDeVidage::Texte(std::string_view libellé, std::string_view texte) {
  std::string& ligne = lignes_.emplace_back(retrait_);
  ligne += libellé;
  ligne += texte;
}

void BlocDeVidage::Nombre(std::string_view libellé, double nombre) {
  Texte(libellé, TexteDeNombre(nombre));
}

void BlocDeVidage::Adresse(std::string_view libellé, std::int32_t adresse) {
  Texte(libellé, Hexadécimal(adresse));
}

void BlocDeVidage::Choix(std::string_view libellé, std::span<const std::string_view> textes,
                         std::int32_t rang) {
  if (rang < 0 || static_cast<std::size_t>(rang) >= textes.size()) return;
  const std::string_view texte = textes[static_cast<std::size_t>(rang)];
  if (!texte.empty()) Texte(libellé, texte);
}

void BlocDeVidage::Point(std::int32_t indice, std::string_view objet, double unités,
                         double points) {
  const std::string début = "Point d'étalonnage " + std::to_string(indice);
  Nombre(début + " en unité " + std::string(objet), unités);
  Nombre(début + " en point " + std::string(objet), points);
}

void BlocDeVidage::Ajoute(const Objet& objet, std::string_view ou) const {
  objet.LaPlateforme().fichiers->AjouteBloc(ou, lignes_);
}

}  // namespace zuma
