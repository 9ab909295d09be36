// Goes into each file that is mutated: which mutant is alive, and which places were reached.
#pragma once

namespace zuma_mutants {

inline constexpr int kAuPlus = 8192;
extern int vivant;              // from $ZUMA_MUTANT; 0 for none
extern bool atteints[kAuPlus];  // since they were cleared

inline bool M(int numéro) {
  atteints[numéro] = true;
  return numéro == vivant;
}

// One function for each operator; a lambda for an operand that must not be looked at too early.
template <class A, class B>
auto Strict(int n, const A& a, const B& b) {
  return M(n) ? a <= b : a < b;
}
template <class A, class B>
auto StrictSup(int n, const A& a, const B& b) {
  return M(n) ? a >= b : a > b;
}
template <class A, class B>
auto Large(int n, const A& a, const B& b) {
  return M(n) ? a < b : a <= b;
}
template <class A, class B>
auto LargeSup(int n, const A& a, const B& b) {
  return M(n) ? a > b : a >= b;
}
template <class A, class B>
auto Egal(int n, const A& a, const B& b) {
  return M(n) ? !(a == b) : a == b;
}
template <class A, class B>
auto Autre(int n, const A& a, const B& b) {
  return M(n) ? a == b : !(a == b);
}
template <class A, class B>
auto Plus(int n, const A& a, const B& b) {
  return M(n) ? a - b : a + b;
}
template <class A, class B>
auto Moins(int n, const A& a, const B& b) {
  return M(n) ? a + b : a - b;
}
template <class A, class B>
auto Fois(int n, const A& a, const B& b) {
  return M(n) ? a / b : a * b;
}
template <class A, class B>
auto Par(int n, const A& a, const B& b) {
  return M(n) ? a * b : a / b;
}
template <class B>
bool Et(int n, bool a, B&& b) {
  return M(n) ? a || b() : a && b();
}
template <class B>
bool Ou(int n, bool a, B&& b) {
  return M(n) ? a && b() : a || b();
}
inline bool Non(int n, bool a) {
  return M(n) ? a : !a;
}

}  // namespace zuma_mutants
