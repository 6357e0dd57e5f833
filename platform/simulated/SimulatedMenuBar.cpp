#include "platform/simulated/SimulatedMenuBar.h"

#include <utility>

#include "platform/simulated/SimulatedApplication.h"
#include "platform/simulated/World.h"

namespace tavelo::simulated {
namespace {

/// The titles of the usual menus. The paste items have members of their own because they do something.
struct StandardMenus {
  const char* file;
  std::vector<const char*> fileItems;
  const char* edit;
  std::vector<const char*> editItems;
  const char* paste;
  const char* pasteWithoutStyle;
  const char* selectAll;
  const char* help;
};

StandardMenus standardMenus(MenuLanguage language) {
  switch (language) {
    case MenuLanguage::english:
      return {"File",  {"New", "Open…", "Save"}, "Edit",       {"Undo", "Redo", "Cut", "Copy"},
              "Paste", "Paste and Match Style",  "Select All", "Help"};
    case MenuLanguage::vietnamese:
      return {"Tệp", {"Mới", "Mở…", "Lưu"},      "Sửa",         {"Hoàn tác", "Làm lại", "Cắt", "Sao chép"},
              "Dán", "Dán và khớp với kiểu chữ", "Chọn tất cả", "Trợ giúp"};
    case MenuLanguage::german:
      break;
  }
  return {"Datei",           {"Neu", "Öffnen…", "Sichern"},
          "Bearbeiten",      {"Widerrufen", "Wiederholen", "Ausschneiden", "Kopieren"},
          "Einfügen",        "Einfügen und Stil anpassen",
          "Alles auswählen", "Hilfe"};
}

}  // namespace

SimulatedMenuBar::SimulatedMenuBar(World& world, SimulatedApplication& application)
    : world_(world), application_(application) {}

SimulatedMenuItem& SimulatedMenuBar::add(std::optional<std::string> title) {
  return *menus_.emplace_back(
      std::make_shared<SimulatedMenuItem>(*this, nullptr, std::move(title), MenuRole::nothing));
}

void SimulatedMenuBar::addStandardMenus(MenuLanguage language) {
  const StandardMenus menus = standardMenus(language);
  SimulatedMenuItem& file = add(menus.file);
  for (const char* title : menus.fileItems) file.add(title);
  SimulatedMenuItem& edit = add(menus.edit);
  for (const char* title : menus.editItems) edit.add(title);
  edit.add(menus.paste, MenuRole::paste);
  edit.add(menus.pasteWithoutStyle, MenuRole::paste);
  edit.add(menus.selectAll);
  add(menus.help);
}

void SimulatedMenuBar::close() {
  if (open_ == nullptr) return;
  world_.report(WorldEvent::Kind::menu, open_->title() + " closed in " + application_.description());
  open_ = nullptr;
}

std::string SimulatedMenuBar::description() const { return application_.description() + "/menu bar"; }

platform::AXError SimulatedMenuBar::copyAttribute(const std::string& attribute, platform::AXValue& value) {
  if (attribute == platform::ax::title) return platform::AXError::noValue;
  if (attribute != platform::ax::children) return platform::AXError::attributeUnsupported;
  value = std::vector<platform::AXUIElementRef>{menus_.begin(), menus_.end()};
  return platform::AXError::success;
}

bool SimulatedMenuBar::showsItemsOf(const SimulatedMenuItem& menu) const {
  if (visibility_.whileClosed) return true;
  return open_ == &menu && world_.loop().uptime() >= openedAt_ + platform::toUptime(visibility_.builtAfter);
}

void SimulatedMenuBar::open(SimulatedMenuItem& menu) {
  if (open_ == &menu) return;
  close();
  open_ = &menu;
  openedAt_ = world_.loop().uptime();
  world_.report(WorldEvent::Kind::menu, menu.title() + " opened in " + application_.description());
}

void SimulatedMenuBar::choose(const SimulatedMenuItem& item, MenuRole role) {
  presses_.push_back(item.title());
  world_.report(WorldEvent::Kind::menu, item.title() + " pressed in " + application_.description());
  if (role == MenuRole::paste) application_.paste();
  close();
}

}  // namespace tavelo::simulated
