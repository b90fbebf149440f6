// The screen of export and import: it shows the state of CExchange and hands every tap to it.
#pragma once

#include <QButtonGroup>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>
#include <functional>

#include "core/app_state.h"
#include "exchange/exchange.h"
#include "platform/qt/controls.h"
#include "platform/qt/device_shell.h"
#include "platform/qt/modal_screen.h"

namespace exchange {

class CExchangeDlg : public platform::qt::ModalScreen {
 public:
  CExchangeDlg(QWidget* over, core::CAppState& app, ExchangeKind kind);

  // Runs until its user leaves it.
  int RunModal();

 protected:
  void OnEnter() override { OnEscape(); }
  void mousePressEvent(QMouseEvent* event) override;

 private:
  void MakeTitleRow(QVBoxLayout& rows);
  void MakePathRows(QVBoxLayout& rows);
  void MakeRunRow(QVBoxLayout& rows);
  void MakeMenu();
  QPushButton* AddButton(int id, const QString& text, int units, std::function<void()> onClick);
  void AddChoice(QGroupBox& group, QButtonGroup& choices, int id, const QString& text, int value);

  void OnRun();
  void OnBrowse();
  void ShowProgress(int done, int total);
  void ShowState();

  platform::qt::Controls controls_;
  CExchange exchange_;
  QLineEdit* path_;
  QButtonGroup* versions_;
  QButtonGroup* readModes_;
  QGroupBox* readModeGroup_ = nullptr;  // none for an export
  QProgressBar* progress_;
  QElapsedTimer sinceProgress_;
  platform::qt::SoftKeyBar* keys_;
};

}  // namespace exchange
