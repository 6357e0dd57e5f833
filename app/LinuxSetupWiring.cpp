#include "app/LinuxSetupWiring.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include <unistd.h>

#include "platform/Platform.h"
#include "platform/linux/accessibility/AtspiAccessibility.h"
#include "platform/linux/audio/SoundSources.h"
#include "platform/linux/session/Autostart.h"
#include "platform/linux/session/DesktopEntries.h"
#include "platform/linux/session/DisplayServer.h"
#include "platform/recognizer/ModelConfiguration.h"
#include "platform/recognizer/server/VoskServer.h"
#include "settings/Names.h"

namespace tavelo {
namespace {

namespace names = settings::names;

constexpr const char* locale = "vi_VN";

/// How long a server that is being tried may take, and how often we look.
constexpr platform::Seconds trialLimit{6.0};
constexpr platform::Seconds trialInterval{0.1};
constexpr const char* noAnswer = "không trả lời trong 6 giây";

using Names = std::vector<const char*>;

Names namesOf(SetupDesktop::Choice choice) {
  using enum SetupDesktop::Choice;
  switch (choice) {
    case microphone:
      return {names::microphone};
    case holdKey:
      return {names::holdKey};
    case recognizer:
      break;
  }
  return {names::recognizer, names::model, names::voskModel};
}

bool hasModel(const settings::Settings& settings, const std::optional<std::filesystem::path>& dataHome) {
  const recognizer::ModelConfiguration configuration(
      dataHome, [&settings](const char* name) { return settings.value(name); });
  return configuration.modelFolder(locale).has_value();
}

/// Writes settings and has them used. Returns why that failed.
std::string change(const SetupParts& parts, const settings::Values& values) {
  auto problem = parts.settings.write(values);
  if (problem.empty()) parts.takeSettings();
  return problem;
}

/// One attempt to reach a server, until it has succeeded or failed.
class Trial final : public std::enable_shared_from_this<Trial> {
 public:
  using Done = std::function<void(const std::string& failure)>;

  static void begin(platform::MainQueue& mainQueue, const std::string& address, Done done) {
    auto parsed = recognizer::VoskServerAddress::parse(address);
    if (parsed.url) {
      std::make_shared<Trial>(mainQueue, *parsed.url, std::move(done))->look();
    } else {
      mainQueue.async([done = std::move(done), failure = parsed.failure] { done(failure); });
    }
  }

  Trial(platform::MainQueue& mainQueue, QUrl address, Done done)
      : mainQueue_(mainQueue),
        done_(std::move(done)),
        server_(std::move(address)),
        attempt_(server_.connect()) {}

 private:
  void look() {
    using State = recognizer::Outcome::State;
    const auto state = attempt_.outcome->state();
    const bool isOver = state == State::pending && looks_++ * trialInterval > trialLimit;
    if (state != State::pending || isOver) return done_(isOver ? noAnswer : attempt_.outcome->failure());
    mainQueue_.asyncAfter(trialInterval, [self = shared_from_this()] { self->look(); });
  }

  platform::MainQueue& mainQueue_;
  const Done done_;
  recognizer::VoskServer server_;
  recognizer::VoskServer::Attempt attempt_;
  int looks_ = 0;
};

RecognizerCondition conditionOf(const SetupParts& parts, std::function<std::optional<std::string>()>& load,
                                bool anew) {
  using enum RecognizerCondition::State;
  const auto address = parts.settings.value(names::recognizer);
  if (!address.empty()) return {server, address};
  if (!hasModel(parts.settings, parts.dataHome)) return {missing, {}};
  if (anew || !load) load = parts.speech.load(locale);
  const auto outcome = load ? load() : std::nullopt;
  if (!outcome) return {loading, {}};
  return outcome->empty() ? RecognizerCondition{ready, {}} : RecognizerCondition{failed, *outcome};
}

void addSettings(SetupDesktop& desktop, const SetupParts& parts) {
  desktop.variable = [parts](SetupDesktop::Choice choice) -> std::string {
    for (const char* name : namesOf(choice))
      if (parts.settings.get(name).origin == settings::Origin::environment) return name;
    return {};
  };
  desktop.microphone = [parts] { return parts.settings.value(names::microphone); };
  desktop.chooseMicrophone = [parts](const std::string& name) {
    return change(parts, {{names::microphone, name}});
  };
  desktop.chooseHoldKey = [parts](const std::string& key) { return change(parts, {{names::holdKey, key}}); };
  desktop.chooseServer = [parts](const std::string& address) {
    return change(parts, {{names::recognizer, address}});
  };
  desktop.chooseInstalledModel = [parts]() -> std::string {
    settings::Values forgotten;
    for (const char* name : namesOf(SetupDesktop::Choice::recognizer))
      if (parts.settings.get(name).origin == settings::Origin::file) forgotten[name] = "";
    const auto problem = forgotten.empty() ? std::string() : parts.settings.write(forgotten);
    if (problem.empty()) parts.renewSpeech();
    return problem;
  };
  desktop.modelsUrl = parts.settings.value(names::modelsUrl);
  desktop.libraryUrl = parts.settings.value(names::libraryUrl);
}

void addAccessibility(SetupDesktop& desktop, const SetupParts& parts) {
  desktop.accessibility = [parts] {
    const auto facts = parts.accessibility.facts();
    if (!facts.busAnswers) return AccessibilityCondition::noBus;
    return facts.isEnabled ? AccessibilityCondition::on : AccessibilityCondition::off;
  };
  desktop.enableAccessibility = [parts] { parts.accessibility.enable(); };
  const auto entries =
      std::make_shared<linuxdesktop::DesktopEntries>(linuxdesktop::DesktopEntries::ofEnvironment());
  desktop.unreachableApplications = [parts, entries] {
    const auto reachable = parts.accessibility.reachableProcesses();
    auto& windows = parts.displayServer.windows();
    std::set<std::string> found;
    for (const auto window : parts.displayServer.applicationWindows()) {
      const auto process = windows.process(window);
      if (!process || *process == ::getpid() || std::ranges::find(reachable, *process) != reachable.end())
        continue;
      const auto windowClass = windows.windowClass(window);
      if (!windowClass) continue;
      const auto* entry = entries->find(*windowClass, {});
      found.insert(entry != nullptr ? entry->name : windowClass->name);
    }
    return std::vector(found.begin(), found.end());
  };
}

void addSession(SetupDesktop& desktop, const SetupParts& parts) {
  desktop.startsWithSession = [] {
    return linuxdesktop::Autostart::ofUser().status().state == linuxdesktop::Autostart::State::on;
  };
  desktop.startWithSession = [](bool on) { return linuxdesktop::Autostart::ofUser().set(on); };
  desktop.notify = [parts](const std::string& title, const std::string& body) {
    parts.notifications.post(title, body);
  };
}

}  // namespace

SetupDesktop makeSetupDesktop(const SetupParts& parts) {
  SetupDesktop desktop;
  addSettings(desktop, parts);
  addAccessibility(desktop, parts);
  addSession(desktop, parts);
  desktop.dataHome = parts.dataHome;
  desktop.listSoundSources =
      [sources = std::make_shared<linuxdesktop::SoundSources>(parts.mainQueue)](auto answer) {
        sources->ask([answer = std::move(answer)](const linuxdesktop::SoundSources::Answer& found) {
          SoundSourceList list{.sources = {}, .error = found.error};
          for (const auto& each : found.sources)
            list.sources.push_back({each.name, each.description, each.isDefault});
          answer(list);
        });
      };
  desktop.recognizer = [parts, load = std::function<std::optional<std::string>()>()](bool anew) mutable {
    return conditionOf(parts, load, anew);
  };
  desktop.tryServer = [&queue = parts.mainQueue](const std::string& address, auto done) {
    Trial::begin(queue, address, std::move(done));
  };
  desktop.canWatchKeys = parts.displayServer.canWatchKeys();
  desktop.holdKeyName = [parts] { return parts.displayServer.holdKeyName(); };
  desktop.keyFacts = [parts](std::int64_t keyCode) { return parts.displayServer.keyFacts(keyCode); };
  return desktop;
}

bool lacksRecognizer(const settings::Settings& settings,
                     const std::optional<std::filesystem::path>& dataHome) {
  const auto isSet = [&](const char* name) { return !settings.value(name).empty(); };
  constexpr std::array configured{names::recognizer, names::model, names::voskModel, names::sherpaLibrary,
                                  names::voskLibrary};
  return std::ranges::none_of(configured, isSet) && !hasModel(settings, dataHome);
}

}  // namespace tavelo
