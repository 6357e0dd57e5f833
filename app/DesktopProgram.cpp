#include "app/DesktopProgram.h"

#include <QApplication>
#include <QEvent>

#include "platform/MainQueue.h"
#include "platform/Platform.h"
#include "ui/ProductData.h"

namespace tavelo {
namespace {

/// Ends the run loop with all that are nested in it; a modal alert is left as if it had been dismissed.
void terminate() { QCoreApplication::exit(0); }

}  // namespace

DesktopProgram::DesktopProgram()
    : signals_(terminate), delegate_(std::make_shared<AppDelegate<ApplicationServices>>()) {
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
    // Only now, so that a large model takes nothing from the start.
    wiring_.preloadSpeech("vi_VN");
  });
  return QCoreApplication::exec();
}

void DesktopProgram::receive(InstanceMessage message) {
  platform::current().mainQueue.async([this, message] {
    switch (message) {
      case InstanceMessage::showMenu:
        delegate_->statusController().openMenu();
        break;
      case InstanceMessage::insertLastText:
        delegate_->scheduleInsertLastText();
        break;
    }
  });
}

bool DesktopProgram::eventFilter(QObject* watched, QEvent* event) {
  if (watched == QCoreApplication::instance() && event->type() == QEvent::Quit) {
    terminate();
    return true;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace tavelo
