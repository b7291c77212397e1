#include "apps/studio/dialogs/number_field.h"

#include <QLineEdit>
#include <QLocale>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QWheelEvent>
#include <cmath>
#include <optional>

namespace sorvanix::studio {

namespace {

// With or without its unit, and with a comma where the user's language has one.
std::optional<double> NumberIn(QString text, const QString& unit) {
  text = text.trimmed();
  if (const QString bare = unit.trimmed(); !bare.isEmpty() && text.endsWith(bare)) {
    text.chop(bare.size());
  }
  bool isNumber = false;
  const double number = QLocale::c().toDouble(text.trimmed().replace(',', '.'), &isNumber);
  return isNumber && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

// To as many digits as a field has room for, whole numbers with all of theirs. What the user does
// not touch keeps all that it has.
QString Spelled(double number) {
  constexpr int kDigits = 6, kWholeDigits = 10;
  constexpr double kLargestWhole = 2147483648;
  const bool isWhole = std::fabs(number) <= kLargestWhole && number == std::floor(number);
  return QLocale::c().toString(number, 'g', isWhole ? kWholeDigits : kDigits);
}

}  // namespace

NumberField::NumberField(QWidget* parent) : QAbstractSpinBox(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setAlignment(Qt::AlignRight);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(this, &QAbstractSpinBox::editingFinished, this, &NumberField::TakeTyped);
}

void NumberField::ShowNumber(double number, const QString& unit) {
  unit_ = unit;
  shown_ = Spelled(number) + unit;
  if (lineEdit()->text() != shown_) lineEdit()->setText(shown_);
}

// From the number that stands there, taken over or not.
void NumberField::stepBy(int steps) {
  TakeTyped();
  Q_EMIT Stepped(steps);
}

QSize NumberField::sizeHint() const {
  ensurePolished();
  const int text = fontMetrics().horizontalAdvance(QStringLiteral("-0000.000 %"));
  QStyleOptionSpinBox option;
  initStyleOption(&option);
  return style()->sizeFromContents(QStyle::CT_SpinBox, &option,
                                   {text, lineEdit()->sizeHint().height()}, this);
}

void NumberField::TakeTyped() {
  const QString typed = lineEdit()->text();
  if (typed == shown_) return;
  const auto number = NumberIn(typed, unit_);
  lineEdit()->setText(shown_);  // until the gadget says what became of it
  if (number) Q_EMIT Typed(*number);
}

// A wheel that turns over a field on its way elsewhere changes nothing.
void NumberField::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) return QAbstractSpinBox::wheelEvent(event);
  event->ignore();
}

}  // namespace sorvanix::studio
