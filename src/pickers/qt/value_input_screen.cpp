#include "pickers/qt/value_input_screen.h"

#include <algorithm>

#include "platform/metrics.h"
#include "platform/qt/controls.h"
#include "platform/qt/qt_text.h"

namespace pickers {
namespace {

using platform::Scaled;
using platform::qt::MakeButton;
using platform::qt::MakeLabel;

}  // namespace

ValueInputDlg::ValueInputDlg(QWidget* over, ValueInputParams& params)
    : ModalScreen(over),
      params_(params),
      box_(new QFrame(this)),
      label_(MakeLabel({}, params.title.value_or(u"値の入力"), box_)),
      line_(new QLineEdit(platform::qt::ToQt(params.value), box_)),
      ok_(MakeButton(QStringLiteral("1"), QStringLiteral("OK"), box_, [this] { Accept(); })),
      cancel_(MakeButton(QStringLiteral("2"), QStringLiteral("キャンセル"), box_,
                         [this] { OnEscape(); })) {
  box_->setFrameShape(QFrame::Box);
  line_->setAccessibleName(label_->text());
  line_->setObjectName(QStringLiteral("1500"));
  line_->setFont(platform::qt::FixedFont(12));
  line_->selectAll();
  line_->setFocus();
  connect(line_, &QLineEdit::returnPressed, this, &ValueInputDlg::Accept);
}

// Follows whatever makes the screen smaller, an input panel above all.
void ValueInputDlg::resizeEvent(QResizeEvent* event) {
  ModalScreen::resizeEvent(event);
  const int boxWidth = std::min(Scaled(230), width());
  const int inner = boxWidth - Scaled(4);
  box_->setGeometry((width() - boxWidth) / 2, (height() - Scaled(70)) / 2, boxWidth, Scaled(70));
  label_->setGeometry(Scaled(4), Scaled(2), inner - Scaled(124), Scaled(26));
  cancel_->setGeometry(boxWidth - Scaled(126), Scaled(2), Scaled(74), Scaled(26));
  ok_->setGeometry(boxWidth - Scaled(52), Scaled(2), Scaled(50), Scaled(26));
  line_->setGeometry(Scaled(2), Scaled(36), inner, Scaled(26));
}

void ValueInputDlg::Accept() {
  params_.value = platform::qt::FromQt(line_->text());
  EndScreen(platform::qt::kResultOk);
}

}  // namespace pickers
