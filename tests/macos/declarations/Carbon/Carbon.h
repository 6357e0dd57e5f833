#pragma once

#include <CoreFoundation/CoreFoundation.h>

extern "C" Boolean IsSecureEventInputEnabled(void);
