#import <AppKit/AppKit.h>

@implementation NSEvent
@end
