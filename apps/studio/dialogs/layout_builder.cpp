#include "apps/studio/dialogs/layout_builder.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QTabWidget>
#include <algorithm>

#include "apps/studio/dialogs/gadget_kinds.h"

namespace sorvanix::studio {

namespace {

using host::ElementKind;
using host::LayoutElement;

constexpr int kSpacing = 6;        // between a label and its field, and between fields
constexpr int kGroupSpacing = 10;  // between groups, and between columns

bool HasChildren(const LayoutElement& element) { return element.kind <= ElementKind::Tabs; }

bool StandsForItself(const LayoutElement& element) {
  return !HasChildren(element) && element.kind != ElementKind::Area;
}

// Framed or not, it stands apart from its neighbours.
bool IsPart(const LayoutElement& element) {
  return HasChildren(element) && element.kind != ElementKind::Row;
}

// A gadget with a label beside it; a check box and a button bear their own.
bool IsLabelled(const LayoutElement& element) {
  return StandsForItself(element) && element.kind != ElementKind::Label &&
         element.kind != ElementKind::Check && element.kind != ElementKind::Button &&
         !element.label.empty();
}

// A row of a form begins with a label.
bool IsRowOfFields(const LayoutElement& element) {
  if (element.kind != ElementKind::Row || element.children.empty()) return false;
  if (!std::all_of(element.children.begin(), element.children.end(), StandsForItself)) return false;
  const LayoutElement& first = element.children.front();
  return (first.kind == ElementKind::Label && element.children.size() > 1) || IsLabelled(first);
}

bool IsFields(const LayoutElement& element) {
  return IsLabelled(element) || IsRowOfFields(element);
}

// At the top of a dialog stands its banner, as wide as the dialog.
bool IsBanner(const LayoutElement& element) {
  return element.kind == ElementKind::Area && element.width >= 8 * element.height;
}

template <class Box>
Box* Tight(Box* layout, int spacing) {
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(spacing);
  return layout;
}

}  // namespace

// A label whose text changes later may widen its own form.
void LayoutBuilder::Forms::LetFieldsBeginAtOnePlace() const {
  int widest = 0;
  for (const QLabel* label : labels) widest = std::max(widest, label->sizeHint().width());
  for (QGridLayout* grid : grids) grid->setColumnMinimumWidth(0, widest);
  for (const auto& [place, inner] : innerLabels) {
    widest = 0;
    for (const QLabel* label : inner) widest = std::max(widest, label->sizeHint().width());
    for (QLabel* label : inner) label->setMinimumWidth(widest);
  }
}

QWidget* LayoutBuilder::Build(const LayoutElement& root) {
  const bool hasBanner =
      root.kind == ElementKind::Column && !root.children.empty() && IsBanner(root.children.front());
  if (!hasBanner) return MakeColumn({&root, 1});
  auto* all = new QWidget;
  auto* column = Tight(new QVBoxLayout(all), kGroupSpacing);
  column->addWidget(MakeArea(root.children.front(), true));
  column->addWidget(MakeColumn(Elements(root.children).subspan(1)), 1);
  return all;
}

QWidget* LayoutBuilder::Make(const LayoutElement& element, Forms& forms) {
  switch (element.kind) {
    case ElementKind::Column:
      return MakeColumn(element.children);
    case ElementKind::Row:
      return MakeRow(element);
    case ElementKind::Group:
      return MakeForm(new QGroupBox(QString::fromStdString(element.label)), element.children,
                      forms);
    case ElementKind::Grid:
      return MakeGrid(element);
    case ElementKind::Tabs:
      return MakeTabs(element);
    case ElementKind::Area:
      return MakeArea(element, false);
    default:
      return MakeGadget(element);
  }
}

QWidget* LayoutBuilder::MakeColumn(Elements children) {
  Forms forms;
  QWidget* column = MakeForm(new QWidget, children, forms);
  column->layout()->setContentsMargins(0, 0, 0, 0);
  forms.LetFieldsBeginAtOnePlace();
  return column;
}

QWidget* LayoutBuilder::MakeForm(QWidget* frame, Elements children, Forms& forms) {
  auto* form = new QGridLayout(frame);
  const bool hasParts = std::any_of(children.begin(), children.end(), IsPart);
  const bool hasFields = std::any_of(children.begin(), children.end(), IsFields);
  form->setHorizontalSpacing(kSpacing);
  form->setVerticalSpacing(hasParts ? kGroupSpacing : kSpacing);
  form->setColumnStretch(1, 1);
  if (hasFields) forms.grids.push_back(form);
  for (const LayoutElement& child : children) AddToForm(*form, child, hasFields, forms);
  const bool endsWithFrame = !children.empty() && children.back().kind == ElementKind::Group;
  form->setRowStretch(endsWithFrame ? form->rowCount() - 1 : form->rowCount(), 1);
  return frame;
}

void LayoutBuilder::AddToForm(QGridLayout& form, const LayoutElement& element, bool hasFields,
                              Forms& forms) {
  const int row = form.rowCount();
  if (IsRowOfFields(element)) return AddFields(form, element.children, forms);
  if (IsLabelled(element)) return AddFields(form, {&element, 1}, forms);
  QWidget* widget = Make(element, forms);
  if (element.kind == ElementKind::Area) {
    form.addWidget(widget, row, 0, 1, 2, Qt::AlignHCenter);
  } else if (element.kind == ElementKind::Check && hasFields) {
    form.addWidget(widget, row, 1);  // below the fields
  } else {
    form.addWidget(widget, row, 0, 1, 2);
  }
}

// A label, and what it belongs to beside it.
void LayoutBuilder::AddFields(QGridLayout& form, Elements row, Forms& forms) {
  const int line = form.rowCount();
  auto* fields = Tight(new QHBoxLayout, kSpacing);
  bool fills = false;
  for (const LayoutElement& child : row) {
    const bool isFirst = &child == &row.front();
    QWidget* field = MakeGadget(child);
    if (isFirst && child.kind == ElementKind::Label) {
      forms.labels.push_back(static_cast<QLabel*>(field));
      form.addWidget(field, line, 0);
      continue;
    }
    if (IsLabelled(child)) {
      QLabel* label = MakeLabel(child, field);
      if (isFirst) {
        forms.labels.push_back(label);
        form.addWidget(label, line, 0);
      } else {
        forms.innerLabels[static_cast<std::size_t>(&child - &row.front())].push_back(label);
        fields->addWidget(label);
      }
    }
    fields->addWidget(field);
    fills = fills || field->sizePolicy().expandingDirections().testFlag(Qt::Horizontal);
  }
  if (!fills) fields->addStretch();
  form.addLayout(fields, line, 1);
}

QLabel* LayoutBuilder::MakeLabel(const LayoutElement& element, QWidget* field) {
  auto* label = new QLabel(QString::fromStdString(element.label));
  label->setBuddy(field);
  label->setToolTip(field->toolTip());
  views_.at(element.id)->SetLabel(label);
  return label;
}

QWidget* LayoutBuilder::MakeRow(const LayoutElement& element) {
  auto* row = new QWidget;
  const bool hasParts = std::any_of(element.children.begin(), element.children.end(), HasChildren);
  auto* layout = Tight(new QHBoxLayout(row), hasParts ? kGroupSpacing : kSpacing);
  for (const LayoutElement& child : element.children) {
    Forms forms;
    QWidget* widget = Make(child, forms);
    if (IsLabelled(child)) layout->addWidget(MakeLabel(child, widget));
    // A column of pictures is as wide as they are; what is left goes to those with fields. Pages
    // are as high as what stands on them.
    layout->addWidget(widget, widget->findChild<AreaWidget*>() != nullptr ? 0 : 1,
                      child.kind == ElementKind::Tabs ? Qt::AlignTop : Qt::Alignment());
  }
  return row;
}

QWidget* LayoutBuilder::MakeGrid(const LayoutElement& element) {
  auto* grid = new QWidget;
  auto* layout = Tight(new QGridLayout(grid), kSpacing);
  Forms forms;
  int place = 0;
  for (const LayoutElement& child : element.children) {
    auto* cell = Tight(new QHBoxLayout, kSpacing);
    QWidget* widget = Make(child, forms);
    if (IsLabelled(child)) cell->addWidget(MakeLabel(child, widget));
    cell->addWidget(widget);
    layout->addLayout(cell, place / element.columns, place % element.columns);
    ++place;
  }
  return grid;
}

QWidget* LayoutBuilder::MakeTabs(const LayoutElement& element) {
  auto* tabs = new QTabWidget;
  tabs->setObjectName(QString::number(element.id));
  for (std::size_t i = 0; i < element.children.size(); ++i) {
    QWidget* page = MakeColumn({&element.children[i], 1});
    page->layout()->setContentsMargins(kGroupSpacing, kGroupSpacing, kGroupSpacing, kGroupSpacing);
    tabs->addTab(page, QString::fromStdString(element.entries[i].label));
  }
  views_[element.id] = MakeTabsView({dialog_, element}, tabs);
  return tabs;
}

// An area that the module has no use for stays empty.
QWidget* LayoutBuilder::MakeArea(const LayoutElement& element, bool spans) {
  host::UserArea* area = dialog_.Area(element.id);
  if (area == nullptr) {
    auto* empty = new QWidget;
    empty->setMinimumSize(element.width, element.height);
    return empty;
  }
  return areas_[area] = new AreaWidget(*area, spans);
}

QWidget* LayoutBuilder::MakeGadget(const LayoutElement& element) {
  if (element.id == 0) return new QLabel(QString::fromStdString(element.label));
  GadgetView* view = MakeGadgetView({dialog_, element}, sources_);
  views_[element.id] = view;
  return view->Widget();
}

}  // namespace sorvanix::studio
