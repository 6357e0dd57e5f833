#include "app/DesktopProgram.h"

#include <QApplication>
#include <QEvent>

#include "app/AppDelegateDefinition.h"
#include "app/InstanceMessages.h"
#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "ui/ProductData.h"

namespace tavelo {

template class AppDelegate<ApplicationServices>;

namespace {

/// Ends the run loop and every loop nested in it. A modal alert closes as if the user had dismissed it.
void terminate() { QCoreApplication::exit(0); }

}  // namespace

DesktopProgram::DesktopProgram()
    : signals_(platform::current().mainQueue, terminate),
      delegate_(std::make_shared<AppDelegate<ApplicationServices>>()),
      renewal_(platform::current().mainQueue,
               {.file = [this] { return wiring_.programFile(); },
                .isBusy = [this] { return !delegate_->isAtRest() || delegate_->reviewWindow().isShown(); },
                .tellReplaced = [this] { wiring_.offerRestart([this] { renewal_.restart(); }); },
                .tellRemoved = [this] { wiring_.tellRemoved(); },
                .startAgain =
                    [this] {
                      startAgain_ = true;
                      terminate();
                    }}) {
  wiring_.watchProgramFile([this] { renewal_.somethingChanged(); });
  QCoreApplication::instance()->installEventFilter(this);
}

void DesktopProgram::describeApplication() {
  QCoreApplication::setApplicationName("Tavelo");
  QCoreApplication::setApplicationVersion(TAVELO_VERSION);
  QCoreApplication::setOrganizationName(product::makerName);
  QCoreApplication::setOrganizationDomain(product::siteDomain);
  QGuiApplication::setDesktopFileName(product::desktopFileName);
  QApplication::setQuitOnLastWindowClosed(false);
}

int DesktopProgram::run() {
  platform::current().mainQueue.async([this] {
    delegate_->applicationDidFinishLaunching(terminate);
    announceMissingStatusArea();
    wiring_.announceUnsuitableSession();
    // Last, so that loading a large model does not delay the start.
    wiring_.preloadSpeech("vi_VN");
    if (setsUp_ || wiring_.lacksRecognizer()) receive(InstanceMessage::setUp);
  });
  return QCoreApplication::exec();
}

void DesktopProgram::receive(InstanceMessage message) {
  platform::current().mainQueue.async([this, message] {
    if (message == InstanceMessage::setUp) return wiring_.showSetup();
    if (message == InstanceMessage::restart) return renewal_.restart();
    perform(*delegate_, message);
  });
}

std::string DesktopProgram::forget(const std::string& argument) {
  return tavelo::forget(*delegate_, argument);
}

bool DesktopProgram::eventFilter(QObject* watched, QEvent* event) {
  if (watched == QCoreApplication::instance() && event->type() == QEvent::Quit) {
    terminate();
    return true;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace tavelo
