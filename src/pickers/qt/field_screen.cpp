#include "pickers/qt/field_screen.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QLayout>
#include <utility>

namespace pickers {

FieldScreen::FieldScreen(QWidget* over)
    : ModalScreen(over),
      controls_(this),
      keys_(new platform::qt::SoftKeyBar(this)),
      editor_(new InlineEditor(this, keys_)) {
  connect(editor_, &InlineEditor::TextChanged, this, &FieldScreen::TakeText);
  connect(editor_, &InlineEditor::Chosen, this, &FieldScreen::ChooseEditor);
}

FieldButton* FieldScreen::AddField(int id, std::u16string_view name, std::function<void()> onTap) {
  return pickers::AddField(controls_, id, name, std::move(onTap));
}

void FieldScreen::OnEscape() {
  editor_->Which() != 0 ? DropEditor() : OnClose();
}

void FieldScreen::mousePressEvent(QMouseEvent*) {
  ApplyEditor();
}

void FieldScreen::resizeEvent(QResizeEvent* event) {
  ModalScreen::resizeEvent(event);
  if (layout() != nullptr) {
    layout()->activate();
  } else {
    keys_->setGeometry(0, height() - keys_->height(), width(), keys_->height());
  }
  LayOut();
  editor_->Place();
}

// The open editor's field is where the focus moves on from.
bool FieldScreen::focusNextPrevChild(bool forward) {
  QGuiApplication::inputMethod()->commit();  // what is still being composed counts
  if (editor_->Which() != 0) ApplyEditor();
  return ModalScreen::focusNextPrevChild(forward);
}

}  // namespace pickers
