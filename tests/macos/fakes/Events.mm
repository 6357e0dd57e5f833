#import "tests/macos/fakes/Keyboard.h"

@implementation NSEvent
@end
