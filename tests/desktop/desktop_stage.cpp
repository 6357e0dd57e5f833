// Shows the program's windows on command, for the tests on a virtual desktop. Reads commands from standard
// input and reports what happens in lines on standard output. Ends with the input.

#include <QApplication>
#include <QBuffer>
#include <QClipboard>
#include <QImage>
#include <QMimeData>
#include <QPalette>
#include <QRandomGenerator>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/linux/notifications/DesktopNotifications.h"
#include "platform/linux/session/LinuxWorkspace.h"
#include "platform/linux/x11/X11Desktop.h"
#include "platform/posix/SystemClock.h"
#include "platform/qt/QtMainQueue.h"
#include "tests/desktop/CommandReader.h"
#include "ui/qt/FloatingStatusWindowController.h"
#include "ui/qt/ReviewWindowController.h"

namespace tavelo {
namespace {

class Stage final {
 public:
  Stage() {
    review_.onDismiss = [] { tell("dismissed"); };
  }

 private:
  void perform(const std::string& name, const std::string& text) {
    const auto command = commands_.find(name);
    if (command == commands_.end()) return tell("unknown", name);
    command->second(text);
    tell("done", name);
  }

  /// Copies, as this toolkit does, for other programs: text, HTML, a picture that does not compress and 21
  /// types of its own.
  static void copy(const std::string& text) {
    QImage picture(1300, 1300, QImage::Format_RGB32);
    QRandomGenerator(1).fillRange(reinterpret_cast<quint32*>(picture.bits()), picture.sizeInBytes() / 4);
    auto* data = new QMimeData;
    data->setText(QString::fromStdString(text));
    data->setHtml(QString::fromStdString("<b>" + text + "</b>"));
    // Encode it now, so that nobody who asks for the image waits for that.
    QBuffer encoded;
    encoded.open(QIODevice::WriteOnly);
    picture.save(&encoded, "PNG");
    data->setData("image/png", encoded.data());
    for (int i = 0; i < 21; ++i)
      data->setData("application/x-test-" + QString::number(i),
                    QByteArray(qsizetype{1000} * i, static_cast<char>(i)));
    QGuiApplication::clipboard()->setMimeData(data);
  }

  /// Swaps the pasteboard as an insertion does; reports how many milliseconds that blocked this thread.
  void swap(const std::string& text) {
    const auto begin = std::chrono::steady_clock::now();
    const auto items = pasteboard().pasteboardItems();
    saved_.reset();
    if (items) saved_.emplace();
    for (const auto& item : items.value_or(std::vector<std::shared_ptr<platform::PasteboardItem>>{})) {
      auto& copy = saved_->emplace_back();
      for (const auto& type : item->types())
        copy.representations.push_back({type, item->data(type).value_or("")});
    }
    pasteboard().clearContents();
    pasteboard().setString(text, platform::pasteboardTypeString);
    tellTime("swapped", begin);
  }

  void restore() {
    const auto begin = std::chrono::steady_clock::now();
    if (saved_) {
      pasteboard().clearContents();
      if (!saved_->empty()) pasteboard().writeObjects(*saved_);
    }
    tellTime("restored", begin);
  }

  static void tellTime(const std::string& event, std::chrono::steady_clock::time_point begin) {
    const std::chrono::duration<double, std::milli> taken = std::chrono::steady_clock::now() - begin;
    tell(event, std::to_string(static_cast<int>(taken.count())));
  }

  linuxdesktop::X11Pasteboard& pasteboard() {
    if (!pasteboard_) pasteboard_.emplace();
    return *pasteboard_;
  }

  const posix::SystemClock clock_;
  std::optional<linuxdesktop::X11Pasteboard> pasteboard_;
  std::optional<std::vector<platform::PasteboardItemContent>> saved_;
  qt::QtMainQueue queue_{clock_};
  linuxdesktop::X11Desktop desktop_;
  linuxdesktop::LinuxWorkspace workspace_{desktop_};
  const platform::Names names_{.holdKey = desktop_.holdKeyName()};
  FloatingStatusWindowController overlay_{queue_, workspace_, currentScreenLayout, names_};
  ReviewWindowController review_;
  const std::map<std::string, std::function<void(const std::string&)>> commands_{
      {"recording", [this](const std::string&) { overlay_.showRecording(); }},
      {"transcribing", [this](const std::string& text) { overlay_.showTranscribing(text); }},
      {"inserted", [this](const std::string&) { overlay_.showInserted(); }},
      {"copy", copy},
      {"swap", [this](const std::string& text) { swap(text); }},
      {"restore", [this](const std::string&) { restore(); }},
      {"notify", [](const std::string& text) { linuxdesktop::DesktopNotifications().post("Tavelo", text); }},
      {"notify-for-now",
       [this](const std::string& text) {
         shown_ = linuxdesktop::DesktopNotifications().show("Tavelo", text);
       }},
      {"withdraw", [this](const std::string&) { shown_ = nullptr; }},
      {"appearance",
       [](const std::string&) {
         const QPalette palette = QGuiApplication::palette();
         const bool dark = palette.color(QPalette::Window).lightness() < 128;
         tell(dark ? "dark" : "light");
       }},
      {"hide", [this](const std::string&) { overlay_.hide(); }},
      {"review",
       [this](const std::string& text) {
         review_.show(text, [](const std::string& edited) { tell("insert", edited); });
       }},
  };
  std::shared_ptr<void> shown_;
  const CommandReader reader_{queue_, [this](const auto& name, const auto& text) { perform(name, text); }};
};

}  // namespace
}  // namespace tavelo

int main(int argc, char** argv) {
  const QApplication application(argc, argv);
  QCoreApplication::setApplicationName("Tavelo");
  QApplication::setQuitOnLastWindowClosed(false);
  const tavelo::Stage stage;
  return QCoreApplication::exec();
}
