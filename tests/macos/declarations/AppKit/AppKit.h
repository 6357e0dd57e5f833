#pragma once

#include <AppKit/Application.h>
#include <AppKit/Menus.h>
#include <AppKit/System.h>
#include <AppKit/Views.h>
#include <AppKit/Windows.h>
