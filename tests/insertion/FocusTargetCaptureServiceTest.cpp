#include <gtest/gtest.h>

#include "insertion/FocusTargetCaptureService.h"
#include "platform/simulated/SimulatedDesktop.h"

namespace tavelo {
namespace {

class FocusTargetCaptureServiceTest : public testing::Test {
 protected:
  simulated::SimulatedDesktop desktop_;
  FocusTargetCaptureService service_;
};

TEST_F(FocusTargetCaptureServiceTest, FollowsTheFocusAndReadsBothFieldsSeparately) {
  EXPECT_EQ(service_.capture().application, nullptr);
  EXPECT_EQ(service_.capture().element, nullptr);

  auto& editor = desktop_.openApplication("Soạn thảo");
  auto& page = editor.addField("trang");
  EXPECT_EQ(service_.capture().application.get(), &editor);
  EXPECT_EQ(service_.capture().element.get(), &page);

  auto& launcher = desktop_.workspace().addApplication("Tìm");
  auto& panel = launcher.addField("ô");
  desktop_.workspace().setPanelFocus(&panel);
  EXPECT_EQ(service_.capture().application.get(), &editor)
      << "a floating panel's application does not come to the front";
  EXPECT_EQ(service_.capture().element.get(), &panel);
}

TEST_F(FocusTargetCaptureServiceTest, FailuresLeaveTheElementAbsent) {
  auto& editor = desktop_.openApplication("Soạn thảo");
  editor.addField("trang");
  editor.hang();
  EXPECT_EQ(service_.capture().application.get(), &editor);
  EXPECT_EQ(service_.focusedElement(), nullptr);
  editor.wake();
  desktop_.accessibility().setTrusted(false);
  EXPECT_EQ(service_.capture().application.get(), &editor);
  EXPECT_EQ(service_.capture().element, nullptr);
}

}  // namespace
}  // namespace tavelo
