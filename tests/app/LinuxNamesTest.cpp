#include <QMenu>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "app/LinuxWiring.h"
#include "platform/Platform.h"
#include "speech/SpeechDictationController.h"
#include "tests/platform/qt/OffscreenApplication.h"
#include "tests/ui/qt/Windows.h"
#include "ui/Texts.h"
#include "ui/qt/StatusMenuController.h"

namespace tavelo {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

TEST(LinuxNames, TextsNameTheKeysAndTheSystemOfThisDesktop) {
  qunsetenv("TAVELO_FN_KEY");
  qputenv("XDG_CONFIG_HOME", "/nowhere");
  offscreenApplication();
  const LinuxWiring wiring;
  const platform::Names& names = platform::current().names;
  std::vector<std::string> seen{texts::releaseHoldKey(names), texts::aboutProgram(names),
                                texts::aboutMaker(names)};
  StatusMenuController controller;
  controller.setAccessibilityAvailable(false);
  for (const QAction* each : windowNamed<QMenu>("status.menu")->actions()) {
    seen.push_back(each->text().toStdString());
  }
  SpeechDictationController speech;
  speech.onError = [&](const std::string& message) { seen.push_back(message); };
  speech.start("xx_XX");

  EXPECT_THAT(seen, Contains("Giữ Ctrl phải để nói, nhả Ctrl phải để chèn"));
  EXPECT_THAT(seen, Contains("Dự phòng: Ctrl Alt V"));
  EXPECT_THAT(seen, Contains("Accessibility: Cần cấp để bắt Ctrl phải"));
  EXPECT_THAT(seen, Contains("Máy tính không khởi tạo được bộ nhận diện tiếng Việt."));
  EXPECT_THAT(seen, Each(AllOf(Not(HasSubstr("macOS")), Not(HasSubstr("MacBook")), Not(HasSubstr("Fn")),
                               Not(HasSubstr("Option")))));
}

}  // namespace
}  // namespace tavelo
