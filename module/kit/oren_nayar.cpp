// The Oren-Nayar model, term by term. The names are those of the paper.
#include "module/kit/oren_nayar.h"

#include <cmath>

#include "module/kit/vector.h"

namespace sorvanix {

namespace {

constexpr double kOneByPi = 0.3183098861837907;
constexpr double kOneByPiSquared = 0.10132118364233778;
constexpr float kPi = 3.14159265f;

// In radians. Rounding may carry a cosine beyond 1.
double AngleOf(double cosine) noexcept {
  if (cosine >= 1) return 0;
  if (cosine <= -1) return kPi;
  return std::acos(cosine);
}

double Square(double x) noexcept { return x * x; }
double Cube(double x) noexcept { return x * x * x; }

}  // namespace

OrenNayarFactors OrenNayarFactorsOf(float sigma) noexcept {
  const auto sigma2 = static_cast<float>(Square(sigma));
  return {sigma2, static_cast<float>(1 - 0.5 * sigma2 / (sigma2 + 0.33)),
          static_cast<float>(0.45 * sigma2 / (sigma2 + 0.09))};
}

ViewedSurface ViewSurface(const Vector& normal, const Vector& view) noexcept {
  const Vector facing = Dot(view, normal) < 0 ? Scale(-1, normal) : normal;
  const float cosine = Dot(view, facing);
  return {facing, Normalized(Sub(view, Scale(facing, cosine))), AngleOf(cosine)};
}

double ContrastedCosine(double cosine, float contrast) noexcept {
  if (contrast == 0) return cosine;
  return std::pow(std::fabs(cosine), std::exp(-double{contrast}));
}

Vector OrenNayarShare(const OrenNayarFactors& factors, const Vector& reflectance,
                      const ViewedSurface& surface, const Vector& direction,
                      double cosine) noexcept {
  const double sigma2 = factors.sigma2;
  const Vector lightAlong =
      Normalized(Sub(direction, Scale(surface.normal, static_cast<float>(cosine))));
  const double cosPhi = Dot(lightAlong, surface.viewAlong);
  const double lightAngle = AngleOf(cosine);
  const bool lightIsLower = lightAngle > surface.viewAngle;
  const double alpha = lightIsLower ? lightAngle : surface.viewAngle;
  const double beta = lightIsLower ? surface.viewAngle : lightAngle;

  const double behind = cosPhi >= 0 ? 0 : Cube(2 * beta * kOneByPi);
  const double c2 = factors.b * (std::sin(alpha) - behind);
  const double c3 = Square(4 * alpha * beta * kOneByPiSquared) * 0.125 * sigma2 / (sigma2 + 0.09);
  const double direct = cosine * (factors.a + cosPhi * c2 * std::tan(beta) +
                                  (1 - std::fabs(cosPhi)) * c3 * std::tan((alpha + beta) / 2));
  const double between =
      0.17 * sigma2 * cosine / (sigma2 + 0.13) * (1 - 4 * Square(beta) * cosPhi * kOneByPiSquared);
  return ByComponent([=](double r) { return r * direct + r * r * between; }, reflectance);
}

}  // namespace sorvanix
