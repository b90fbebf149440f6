// One frame of a coasting list, 480 by 640 pixels: a wheel of 24 rows and a list of 100,000, with
// the texts that a coast brings into sight for the first time and with kept ones. A frame has 20
// ms; painting is to take less than 2 of them.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QImage>
#include <string>

#include "platform/qt/application_look.h"
#include "platform/qt/qt_host.h"
#include "platform/qt/qt_text.h"
#include "touch/qt/inertial_list_view.h"

namespace {

void Fill(touch::InertList& list, int rows) {
  for (int i = 0; i < rows; ++i) {
    const std::string number = std::to_string(i);
    list.Add(
        {0, 0, u"打ち合わせのあと駅前のパン屋 " + std::u16string(number.begin(), number.end())});
  }
}

// `rowsAFrame` new rows come into sight with each frame.
void PaintFrames(benchmark::State& state, int rows, int style, int rowsAFrame) {
  QWidget window;
  window.resize(480, 640);
  touch::INERT_LIST_VIEW view(0, style, &window);
  view.SetFont(platform::qt::FixedFont(24));
  view.List().SetHeight(-1, 53);  // twelve rows
  Fill(view.List(), rows);
  view.setGeometry(0, 0, 480, 640);
  QImage frame(480, 640, QImage::Format_ARGB32_Premultiplied);
  view.render(&frame);
  int top = 0;
  for (auto _ : state) {
    top = (top + rowsAFrame) % (rows - 12);
    view.List().SetTop(top);
    view.render(&frame);
  }
}

void WheelWithKeptTexts(benchmark::State& state) {
  PaintFrames(state, 24, touch::ILS_WRAP, 1);
}
void WheelWithShadows(benchmark::State& state) {
  PaintFrames(state, 24, touch::ILS_WRAP | touch::ILS_SHADOW, 1);
}
void LongListAllTextsNew(benchmark::State& state) {
  PaintFrames(state, 100000, 0, 12);
}
void LongListOneTextNew(benchmark::State& state) {
  PaintFrames(state, 100000, 0, 1);
}
BENCHMARK(WheelWithKeptTexts)->Unit(benchmark::kMillisecond);
BENCHMARK(WheelWithShadows)->Unit(benchmark::kMillisecond);
BENCHMARK(LongListOneTextNew)->Unit(benchmark::kMillisecond);
BENCHMARK(LongListAllTextsNew)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  platform::qt::QtHost host;
  platform::SetHost(&host);
  QApplication app(argc, argv);
  platform::qt::DressApplication(app);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
