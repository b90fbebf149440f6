#include "pickers/qt/picker_screen.h"

#include <QPainter>

#include "platform/metrics.h"
#include "platform/qt/controls.h"

namespace pickers {

using platform::Scaled;

PickerDlg::PickerDlg(QWidget* over, const std::optional<std::u16string>& title)
    : ModalScreen(over),
      label_(platform::qt::MakeLabel({}, title.value_or(u"値の選択"), this)),
      keys_(new platform::qt::SoftKeyBar(this)) {
  AddButton("2", QStringLiteral("キャンセル"), 70, [this] { OnEscape(); });
  AddButton("1", QStringLiteral("OK"), 40, [this] { Accept(); });
  keys_->LeftKey().setText(QStringLiteral("OK"));
  connect(&keys_->LeftKey(), &QPushButton::clicked, this, [this] { Accept(); });
  keys_->UseRightKey(QStringLiteral("キャンセル"), [this] { OnEscape(); });
}

QPushButton* PickerDlg::AddButton(const char* name, const QString& text, int units,
                                  std::function<void()> onClick) {
  auto* button =
      platform::qt::MakeButton(QString::fromLatin1(name), text, this, std::move(onClick));
  button->setFixedSize(Scaled(units), Scaled(24));
  buttons_.push_back(button);
  return button;
}

void PickerDlg::Accept() {
  TakeResult();
  EndScreen(platform::qt::kResultOk);
}

void PickerDlg::resizeEvent(QResizeEvent* event) {
  ModalScreen::resizeEvent(event);
  int right = width();
  for (QPushButton* button : buttons_) {
    right -= button->width();
    button->move(right, 0);
  }
  for (size_t i = buttons_.size() - 1; i > 0; --i) setTabOrder(buttons_[i], buttons_[i - 1]);
  label_->setGeometry(Scaled(3), 0, right - Scaled(3), Scaled(24));
  keys_->setGeometry(0, height() - keys_->height(), width(), keys_->height());
  const int top = Scaled(25) + 1;
  PlaceContent(QRect(0, top, width(), height() - keys_->height() - top));
}

void PickerDlg::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.drawLine(0, Scaled(25), width(), Scaled(25));
}

}  // namespace pickers
