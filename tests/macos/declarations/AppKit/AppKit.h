#pragma once

#include <AppKit/System.h>
