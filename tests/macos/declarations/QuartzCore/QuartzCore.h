#pragma once

#include <Foundation/Foundation.h>

@interface CALayer : NSObject
@property CGFloat cornerRadius;
@property BOOL masksToBounds;
@end
