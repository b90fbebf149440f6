#include "texts.h"

#include <QImage>
#include <QUrl>
#include <iterator>

namespace hands {
namespace {

constexpr const char* kTexts[] = {
    "駅",
    "自宅 → 会社",
    "打ち合わせ、電話",
    "今日は一日中雨だった。\nあしたは晴れるらしい。",
    "が\u3099ぎ\u3099",
    "🚲👨‍👩‍👧",
    "שלום",
    "\u202e逆",
    "0",
    "-1",
    "7",
    "32767",
    "99999999999999999999",
    "1e308",
    "nan",
    "09:00",
    "24:00",
    "24:00:00",
    "23:59:59",
    "2026/02/30",
    "2028/02/29",
    "9999/12/31",
    "2026/1/011",
    "35/40/52.3",
    "-180",
    "139.7671",
    "%",
    "_%_",
    "'; drop table t_UserData; --",
    "ID'or 1=1 or 1  >'",
    "\"",
    "%s%n%d",
    "<b>x</b>",
    "<終日>",
    "#SIStaDateTime# #SIMemo#",
    "#if (1 == 1) {\"a\"} else {",
    "#Loop = Loop + 1# #Persons * 1000#",
    "##",
    "~\\export.txt",
    "~/import.txt",
    "~/ver1.txt",
    "~/noise.txt",
    "~/backup/user.sdf",
    "~/new folder/x.sdf",
    "~/user.sdf",
    "~/foreign.sdf",
    "~/torn.sdf",
    "backup",
    "..",
    "\\",
    "C:\\x",
    "\\nowhere\\x.txt",
    "a\tb\tc",
    " ",
    "ｶﾅ　全角ＡＢＣ",
};

}  // namespace

QString AnyText(Chance& chance) {
  switch (Below(chance, 12)) {
    case 0:
      return QStringLiteral("長い文章。").repeated(1 + Below(chance, 450));
    case 1:
      return QString(1 + Below(chance, 5), QChar(0xD800 + Below(chance, 0x800)));  // half a pair
    case 2:
      return QString(QChar(Below(chance, 0x3200)));
    default:
      return QString::fromUtf8(kTexts[Below(chance, std::size(kTexts))]);
  }
}

QString Keys(Chance& chance) {
  static const QString letters =
      QStringLiteral("0123456789/:.-abcxyzABCXYZ \\%_'\"#*?<>|~0123456789");
  QString keys;
  for (int count = 1 + Below(chance, 6); count > 0; --count) {
    keys += letters[Below(chance, static_cast<int>(letters.size()))];
  }
  return keys;
}

QMimeData* AnyClipboard(Chance& chance) {
  auto* data = new QMimeData;
  switch (Below(chance, 6)) {
    case 0:
      break;  // nothing at all
    case 1:
      data->setImageData(QImage(8, 8, QImage::Format_RGB32));
      break;
    case 2:
      data->setUrls({QUrl(QStringLiteral("file:///x")), QUrl()});
      break;
    case 3:
      data->setHtml(QStringLiteral("<p>あ<br>い</p>"));
      break;
    case 4:
      data->setData(QStringLiteral("text/plain"), QByteArray("\xff\xfe\0\x82", 4));
      break;
    default:
      data->setText(AnyText(chance));
  }
  return data;
}

}  // namespace hands
