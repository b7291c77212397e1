// Widgets for the elements of a dialog's layout.
//
// Gadgets that stand one below the other form two columns, labels and fields, and the fields of
// groups that stand one below the other begin at the same place, and so does what follows in rows
// of several. Columns side by side end together.
#pragma once

#include <QGridLayout>
#include <QLabel>
#include <map>
#include <span>
#include <vector>

#include "apps/studio/dialogs/area_widget.h"
#include "apps/studio/dialogs/gadget_view.h"

namespace sorvanix::studio {

class LayoutBuilder {
 public:
  using Views = std::map<std::int32_t, GadgetView*>;
  using Areas = std::map<const host::UserArea*, AreaWidget*>;

  /// All must outlive the widgets; the views and areas that are made are added under their ids.
  LayoutBuilder(host::Dialog& dialog, const LinkSources& sources, Views& views, Areas& areas)
      : dialog_(dialog), sources_(sources), views_(views), areas_(areas) {}

  QWidget* Build(const host::LayoutElement& root);

 private:
  using Elements = std::span<const host::LayoutElement>;
  /// Forms one below the other.
  struct Forms {
    std::vector<QGridLayout*> grids;
    std::vector<const QLabel*> labels;
    std::map<std::size_t, std::vector<QLabel*>> innerLabels;  // by their places in their rows

    void LetFieldsBeginAtOnePlace() const;
  };

  QWidget* Make(const host::LayoutElement& element, Forms& forms);
  QWidget* MakeColumn(Elements children);
  QWidget* MakeForm(QWidget* frame, Elements children, Forms& forms);
  QWidget* MakeRow(const host::LayoutElement& element);
  QWidget* MakeGrid(const host::LayoutElement& element);
  QWidget* MakeTabs(const host::LayoutElement& element);
  QWidget* MakeArea(const host::LayoutElement& element, bool spans);
  QWidget* MakeGadget(const host::LayoutElement& element);

  void AddToForm(QGridLayout& form, const host::LayoutElement& element, bool hasFields,
                 Forms& forms);
  void AddFields(QGridLayout& form, Elements row, Forms& forms);
  QLabel* MakeLabel(const host::LayoutElement& element, QWidget* field);

  host::Dialog& dialog_;
  const LinkSources& sources_;
  Views& views_;
  Areas& areas_;
};

}  // namespace sorvanix::studio
