// The six pages of the options sheet. A control writes what it shows into the values of the open
// sheet as soon as its user changes it.
#pragma once

#include <QFormLayout>
#include <QLineEdit>
#include <QScrollArea>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>

#include "core/settings_choices.h"
#include "options/options.h"
#include "platform/qt/choice_box.h"

namespace options {

// What leads beyond a page and is therefore done by the sheet.
struct PageCommands {
  std::function<void()> browse;   // another data file
  std::function<void()> compact;  // the data file
  std::function<void()> inspect;  // the open one
};

class OptionPage : public QScrollArea {
 public:
  // `options` outlives the page.
  OptionPage(Page page, COptions& options, const PageCommands& commands);

  // Shows what the page does not edit, or what a command has changed.
  void ShowState();

 private:
  struct Choice {
    std::u16string_view text;
    int value;
  };

  void MakeGeneral();
  void MakeDisplay();
  void MakeEditing();
  void MakeFind();
  void MakeNames();
  void MakeData(const PageCommands& commands);

  // Object names are those of the settings.
  void AddCheck(const char* name, std::u16string_view text, int& value, int on = core::kOn,
                int off = core::kOff);
  QComboBox* AddChoice(const char* name, std::u16string_view label, int& value,
                       std::initializer_list<Choice> choices);
  void AddRow(const QString& text, QWidget* field);
  platform::qt::ChoiceBox* AddBox(const char* name, std::u16string_view label);
  void AddText(const char* name, std::u16string_view label, std::u16string& value);
  QLineEdit* MakeText(const char* name, std::u16string& value);
  void ShowFont(int target);

  COptions& options_;
  QFormLayout* form_;
  platform::qt::ChoiceBox* fontName_ = nullptr;
  platform::qt::ChoiceBox* fontSize_ = nullptr;
  QLineEdit* dataFile_ = nullptr;
  QLineEdit* formatVersion_ = nullptr;
};

}  // namespace options
