// Views that keep what they are told, and what they draw with.
#include "tests/macos/fakes/AppKitFakes.h"

const NSFontWeight NSFontWeightRegular = 0;
const NSFontWeight NSFontWeightSemibold = 0.3;
NSAttributedStringKey const NSFontAttributeName = @"NSFont";
NSAttributedStringKey const NSForegroundColorAttributeName = @"NSColor";
NSAttributedStringKey const NSUnderlineStyleAttributeName = @"NSUnderline";
NSAttributedStringKey const NSParagraphStyleAttributeName = @"NSParagraphStyle";
NSAttributedStringKey const NSLinkAttributeName = @"NSLink";

namespace {

using tavelo::fakes::record;
using tavelo::fakes::utf8;

NSColor* colorNamed(NSString* name) {
  NSColor* const color = [NSColor new];
  color.name = name;
  return color;
}

std::string& fillColor() {
  static std::string name;
  return name;
}

}  // namespace

@implementation NSColor
#define COLOR(name)             \
  +(NSColor*)name {             \
    return colorNamed(@ #name); \
  }
COLOR(clearColor)
COLOR(labelColor)
COLOR(secondaryLabelColor)
COLOR(systemBlueColor)
COLOR(systemGreenColor)
COLOR(systemRedColor)
- (void)setFill {
  fillColor() = utf8(self.name);
}
@end

@implementation NSFont
+ (NSFont*)systemFontOfSize:(CGFloat)size {
  return [self systemFontOfSize:size weight:NSFontWeightRegular];
}
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight {
  NSFont* const font = [NSFont new];
  font.pointSize = size;
  font.weight = weight;
  return font;
}
@end

@implementation NSImage
- (instancetype)initWithData:(NSData*)data {
  const std::string bytes(static_cast<const char*>(data.bytes), data.length);
  if (!bytes.starts_with("icns") && !bytes.starts_with("\x89PNG")) return nil;
  self.data = data;
  return self;
}
@end

@implementation NSBezierPath {
  NSRect oval_;
}
+ (NSBezierPath*)bezierPathWithOvalInRect:(NSRect)rect {
  NSBezierPath* const path = [NSBezierPath new];
  path->oval_ = rect;
  return path;
}
- (void)fill {
  record(fillColor() + " oval " + tavelo::fakes::describe(oval_));
}
@end

@implementation NSCoder
@end
@implementation CALayer
@end

@interface NSLayoutAnchor ()
- (instancetype)initWithView:(NSView*)view name:(NSString*)name;
@end
@implementation NSLayoutAnchor {
  __weak NSView* view_;
  NSString* name_;
}
- (instancetype)initWithView:(NSView*)view name:(NSString*)name {
  view_ = view;
  name_ = name;
  return self;
}
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor*)anchor {
  return [self constraintEqualToAnchor:anchor constant:0];
}
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor*)anchor constant:(CGFloat)constant {
  NSLayoutConstraint* const constraint = [NSLayoutConstraint new];
  constraint.first = view_;
  constraint.firstAnchor = name_;
  constraint.second = anchor->view_;
  constraint.secondAnchor = anchor->name_;
  constraint.constant = constant;
  return constraint;
}
@end
@implementation NSLayoutXAxisAnchor
@end
@implementation NSLayoutYAxisAnchor
@end
@implementation NSLayoutDimension
- (NSLayoutConstraint*)constraintEqualToConstant:(CGFloat)constant {
  NSLayoutConstraint* const constraint = [self constraintEqualToAnchor:self constant:constant];
  constraint.second = nil;
  return constraint;
}
@end

@implementation NSLayoutConstraint
+ (void)activateConstraints:(NSArray<NSLayoutConstraint*>*)constraints {
  tavelo::fakes::activations().push_back(constraints);
}
@end

@implementation NSView {
  NSMutableArray<NSView*>* children_;
}
- (instancetype)init {
  return [self initWithFrame:NSZeroRect];
}
- (instancetype)initWithFrame:(NSRect)frame {
  self.frame = frame;
  self.translatesAutoresizingMaskIntoConstraints = YES;
  children_ = [NSMutableArray array];
  return self;
}
- (instancetype)initWithCoder:(NSCoder*)coder {
  return self;
}
- (NSArray<NSView*>*)subviews {
  return children_;
}
- (void)addSubview:(NSView*)view {
  [children_ addObject:view];
}
- (void)setWantsLayer:(BOOL)wants {
  self.layer = wants ? [CALayer new] : nil;
}
- (BOOL)wantsLayer {
  return self.layer != nil;
}
#define ANCHOR(Kind, edge)                                       \
  -(Kind*)edge##Anchor {                                         \
    return (Kind*)[[Kind alloc] initWithView:self name:@ #edge]; \
  }
ANCHOR(NSLayoutXAxisAnchor, leading)
ANCHOR(NSLayoutXAxisAnchor, trailing)
ANCHOR(NSLayoutYAxisAnchor, top)
ANCHOR(NSLayoutYAxisAnchor, bottom)
ANCHOR(NSLayoutYAxisAnchor, centerY)
ANCHOR(NSLayoutDimension, width)
ANCHOR(NSLayoutDimension, height)
@end

@implementation NSVisualEffectView
@end
@implementation NSCell
@end

@implementation NSControl
- (instancetype)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  NSCell* const cell = [NSCell new];
  cell.wraps = YES;
  cell.scrollable = YES;
  self.cell = cell;
  return self;
}
@end

@implementation NSTextField
+ (instancetype)labelWithString:(NSString*)text {
  NSTextField* const label = [[self alloc] initWithFrame:NSZeroRect];
  label.stringValue = text;
  return label;
}
+ (instancetype)wrappingLabelWithString:(NSString*)text {
  NSTextField* const label = [self labelWithString:text];
  label.maximumNumberOfLines = wrappingLabel;
  return label;
}
@end

@implementation NSButton
+ (instancetype)buttonWithTitle:(NSString*)title target:(id)target action:(SEL)action {
  NSButton* const button = [[self alloc] initWithFrame:NSZeroRect];
  button.title = title;
  button.target = target;
  button.action = action;
  return button;
}
@end

@implementation NSImageView
@end
@implementation NSMutableParagraphStyle
@end
@implementation NSTextContainer
@end

@implementation NSAttributedString
- (instancetype)initWithString:(NSString*)string attributes:(NSDictionary<NSString*, id>*)attributes {
  self.string = string;
  self.attributes = attributes;
  return self;
}
@end

@implementation NSTextStorage
- (void)setAttributedString:(NSAttributedString*)text {
  self.string = text.string;
  self.attributes = text.attributes;
}
@end

@implementation NSUndoManager
@end

@implementation NSTextView {
  NSTextStorage* storage_;
}
- (instancetype)initWithFrame:(NSRect)frame {
  self = [super initWithFrame:frame];
  storage_ = [NSTextStorage new];
  self.undoManager = [NSUndoManager new];
  self.textContainer = [NSTextContainer new];
  self.richText = self.drawsBackground = self.horizontallyResizable = YES;
  self.string = @"";
  return self;
}
- (NSTextStorage*)textStorage {
  return storage_;
}
@end

@implementation NSScrollView
@end

@implementation NSStackView
+ (instancetype)stackViewWithViews:(NSArray<NSView*>*)views {
  NSStackView* const stack = [[self alloc] initWithFrame:NSZeroRect];
  for (NSView* each in views) [stack addSubview:each];
  return stack;
}
@end
