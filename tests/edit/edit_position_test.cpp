// The position commands, from the real daemon to the stored Action.
#include "edit/edit_action.h"
#include "edit/edit_fixture.h"
#include "platform/gpsd_device.h"
#include "position/position_request.h"
#include "support/gps_daemon.h"

namespace edit {
namespace {

using platform::Answer;
using EditPosition = edit_test::EditTest;

TEST_F(EditPosition, IsTakenOnlyWithItsUsersConsent) {
  testing_support::GpsDaemon daemon;
  platform::SetGpsDriver([&](int& error) { return platform::OpenGpsd(daemon.Port(), error); });
  const auto refuse = [&](CEditAction& edit) {
    host.NextPost();
    host.answers = {
        {"位置情報を取得しました。値を取り込みますか？\n"
         "Lat:35/40/52.453200\nLon:139/46/1.650000",
         Answer::kNo}};
    edit.OnCommand(33103);
  };
  app.EditOpeCont = 1;
  CEditAction edit = OpenAt(1);
  edit.fields.latitude = u"35/0/0.0";
  host.answers = {"位置情報取得"};
  edit.OnCommand(kIdLongitude);
  EXPECT_EQ(edit.fields.latitude, u"35/0/0.0") << "there is no daemon";

  daemon.Start();
  edit.OnCommand(kIdLongitude);
  EXPECT_EQ(edit.fields.latitude, u"取得中");
  edit.OnCommand(kIdAskPosition);  // again: what was kept stays
  daemon.HaveFix();
  refuse(edit);
  EXPECT_EQ(edit.fields.latitude, u"35/0/0.0");
  EXPECT_EQ(edit.fields.longitude, u"");
  EXPECT_FALSE(edit.dirty);

  host.answers = {Answer::kYes};
  edit.OnCommand(kIdShowPosition);
  EXPECT_TRUE(edit.dirty);
  edit.OnCommand(kIdMapLink);
  ASSERT_EQ(host.links.size(), 1u);
  edit.OnCommand(kIdWrite);
  EXPECT_EQ(Stored(noon, store::kLatitude), "35.681237");
  host.answers = {"位置情報は未取得です。"};  // it is offered once
  edit.OnCommand(kIdShowPosition);

  edit.OnCommand(kIdAskPosition);
  edit.OnCommand(kIdNext);
  refuse(edit);
  EXPECT_EQ(edit.fields.latitude, u"") << "not what the former Action's field had held";
  host.answers = {"位置情報が未取得です。"};
  edit.OnCommand(kIdMapLink);
  position::ClosePositionMonitor();
  platform::SetGpsDriver(nullptr);
}

}  // namespace
}  // namespace edit
