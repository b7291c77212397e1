// A field for a number: typed, or stepped by arrows, keys and wheel.
//
// Limits, steps and rounding are those of the gadget behind it. The field tells what the user wants
// and shows what the gadget makes of it.
#pragma once

#include <QAbstractSpinBox>

namespace sorvanix::studio {

class NumberField : public QAbstractSpinBox {
  Q_OBJECT

 public:
  explicit NumberField(QWidget* parent = nullptr);

  /// Shows a number with its unit, such as " %", behind it.
  void ShowNumber(double number, const QString& unit);

  void stepBy(int steps) override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 Q_SIGNALS:
  /// The user typed another number than the one that was shown.
  void Typed(double number);
  /// An arrow was pressed so many times, downwards below 0.
  void Stepped(int steps);

 protected:
  StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
  void wheelEvent(QWheelEvent* event) override;

 private:
  void TakeTyped();

  QString shown_, unit_;
};

}  // namespace sorvanix::studio
