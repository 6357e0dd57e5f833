#pragma once

#import <AppKit/AppKit.h>

namespace tavelo {

/// A main menu with the standard Edit menu in it. Nobody sees it, because the program is an accessory. But
/// only with it do Command-Z, X, C, V and A work in our windows: AppKit looks for them in the main menu. Main
/// thread.
NSMenu* makeMainMenu();

}  // namespace tavelo
