// The position commands, with a receiver that reads when the test says so.
#include <future>

#include "edit/edit_action.h"
#include "edit_fixture.h"
#include "platform/gps_device.h"
#include "position/position_request.h"

namespace edit {
namespace {

using platform::Answer;

class Receiver : public platform::GpsDevice {
 public:
  platform::GpsEvent WaitForEvent() override { return next_.get_future().get(); }
  void SetStopEvent() override { next_.set_value(platform::GpsEvent::kStop); }
  int GPSGetPosition(platform::GPS_POSITION& position, std::chrono::milliseconds) override {
    position.dblLatitude = 51.5;
    position.dblLongitude = -0.125;
    next_ = {};
    return 0;
  }
  int GPSGetDeviceState(platform::GPS_DEVICE&) override { return -1; }
  void Read() { next_.set_value(platform::GpsEvent::kPosition); }

 private:
  std::promise<platform::GpsEvent> next_;
};

class EditPosition : public edit_test::EditTest {
 protected:
  EditPosition() {
    platform::SetGpsDriver([this](int& error) {
      error = ENODEV;
      return receiver;
    });
    app.SelIndex = 1;
    app.EditOpeCont = 1;
    edit.Open(kOpenChange);
    edit.fields.latitude = u"35/0/0.0";
  }
  ~EditPosition() override {
    position::ClosePositionMonitor();
    platform::SetGpsDriver(nullptr);
  }

  void Arrive(Answer answer) {
    receiver->Read();
    host.NextPost();
    host.answers = {answer};
    edit.OnCommand(33103);
  }

  std::shared_ptr<Receiver> receiver = std::make_shared<Receiver>();
  CEditAction edit{app};
};

TEST_F(EditPosition, IsTakenOnlyWithItsUsersConsent) {
  const auto later = std::exchange(receiver, nullptr);
  edit.OnCommand(kIdLongitude);
  EXPECT_EQ(LastTitle(), "位置情報取得");
  EXPECT_EQ(edit.fields.latitude, u"35/0/0.0") << "there is no receiver";
  receiver = later;
  edit.OnCommand(kIdLongitude);
  EXPECT_EQ(edit.fields.latitude, u"取得中");
  edit.OnCommand(kIdAskPosition);  // again: what was kept stays
  Arrive(Answer::kNo);
  EXPECT_EQ(LastMessage(),
            "位置情報を取得しました。値を取り込みますか？\nLat:51/30/0.000000\nLon:0/7/30.000000");
  EXPECT_EQ(edit.fields.latitude, u"35/0/0.0");
  EXPECT_EQ(edit.fields.longitude, u"");
  EXPECT_FALSE(edit.dirty);

  host.answers = {Answer::kYes};
  edit.OnCommand(kIdShowPosition);
  EXPECT_EQ(edit.fields.longitude, u"0/7/30.000000");
  EXPECT_TRUE(edit.dirty);
  edit.OnCommand(kIdMapLink);
  ASSERT_EQ(host.links.size(), 1u);
  edit.OnCommand(kIdWrite);
  EXPECT_EQ(Stored(noon, store::kLongitude), "-0.125000")
      << "the sign that the field does not show";
  edit.OnCommand(kIdShowPosition);
  EXPECT_EQ(LastMessage(), "位置情報は未取得です。") << "it is offered once";
  edit.OnCommand(kIdClearPosition);
  edit.OnCommand(kIdMapLink);
  EXPECT_EQ(LastMessage(), "位置情報が未取得です。");
}

TEST_F(EditPosition, OfAnActionThatWasLeftStaysOutOfTheNext) {
  edit.OnCommand(kIdAskPosition);
  edit.OnCommand(kIdNext);
  Arrive(Answer::kNo);
  EXPECT_EQ(edit.fields.latitude, u"") << "not what the former Action's field had held";
}

}  // namespace
}  // namespace edit
