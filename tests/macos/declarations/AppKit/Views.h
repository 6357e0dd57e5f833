// Views, controls and what they draw with.
#pragma once

#include <Foundation/Foundation.h>

NS_ASSUME_NONNULL_BEGIN

@class CALayer;

@interface NSColor : NSObject
@property(class, readonly, strong) NSColor* clearColor;
@property(class, readonly, strong) NSColor* labelColor;
@property(class, readonly, strong) NSColor* secondaryLabelColor;
@property(class, readonly, strong) NSColor* systemBlueColor;
@property(class, readonly, strong) NSColor* systemGreenColor;
@property(class, readonly, strong) NSColor* systemRedColor;
- (void)setFill;
@end

typedef CGFloat NSFontWeight;
extern "C" const NSFontWeight NSFontWeightRegular, NSFontWeightSemibold;
@interface NSFont : NSObject
@property(readonly) CGFloat pointSize;
+ (NSFont*)systemFontOfSize:(CGFloat)size;
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight;
@end

@interface NSImage : NSObject
@property NSSize size;
- (nullable instancetype)initWithData:(NSData*)data;
- (void)setTemplate:(BOOL)isTemplate;
@end

@interface NSBezierPath : NSObject
+ (NSBezierPath*)bezierPathWithOvalInRect:(NSRect)rect;
- (void)fill;
@end

@class NSLayoutConstraint, NSLayoutXAxisAnchor, NSLayoutYAxisAnchor, NSLayoutDimension;
@interface NSLayoutAnchor<__covariant Kind> : NSObject
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor<Kind>*)anchor;
- (NSLayoutConstraint*)constraintEqualToAnchor:(NSLayoutAnchor<Kind>*)anchor constant:(CGFloat)constant;
@end
@interface NSLayoutXAxisAnchor : NSLayoutAnchor <NSLayoutXAxisAnchor*>
@end
@interface NSLayoutYAxisAnchor : NSLayoutAnchor <NSLayoutYAxisAnchor*>
@end
@interface NSLayoutDimension : NSLayoutAnchor <NSLayoutDimension*>
- (NSLayoutConstraint*)constraintEqualToConstant:(CGFloat)constant;
@end
@interface NSLayoutConstraint : NSObject
+ (void)activateConstraints:(NSArray<NSLayoutConstraint*>*)constraints;
@end

typedef NS_OPTIONS(NSUInteger, NSAutoresizingMaskOptions) { NSViewWidthSizable = 2 };

@interface NSView : NSObject
- (instancetype)initWithFrame:(NSRect)frame;
- (nullable instancetype)initWithCoder:(NSCoder*)coder;
@property NSRect frame;
@property NSRect bounds;
@property(readonly, copy) NSArray<__kindof NSView*>* subviews;
@property BOOL needsDisplay;
@property BOOL wantsLayer;
@property(nullable, strong) CALayer* layer;
@property BOOL translatesAutoresizingMaskIntoConstraints;
@property NSAutoresizingMaskOptions autoresizingMask;
@property(nullable, copy) NSString* accessibilityLabel;
@property(readonly, strong) NSLayoutXAxisAnchor* leadingAnchor;
@property(readonly, strong) NSLayoutXAxisAnchor* trailingAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* topAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* bottomAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* centerYAnchor;
@property(readonly, strong) NSLayoutDimension* widthAnchor;
@property(readonly, strong) NSLayoutDimension* heightAnchor;
- (void)addSubview:(NSView*)view;
- (void)drawRect:(NSRect)dirtyRect;
@end

typedef NS_ENUM(NSInteger, NSVisualEffectMaterial) { NSVisualEffectMaterialHUDWindow = 13 };
typedef NS_ENUM(NSInteger, NSVisualEffectBlendingMode) { NSVisualEffectBlendingModeBehindWindow = 0 };
typedef NS_ENUM(NSInteger, NSVisualEffectState) { NSVisualEffectStateActive = 1 };
@interface NSVisualEffectView : NSView
@property NSVisualEffectMaterial material;
@property NSVisualEffectBlendingMode blendingMode;
@property NSVisualEffectState state;
@end

typedef NS_ENUM(NSUInteger, NSLineBreakMode) {
  NSLineBreakByTruncatingHead = 3,
  NSLineBreakByTruncatingTail = 4,
};
// The values of the two behind it depend on the processor; these are those of Apple's own.
typedef NS_ENUM(NSInteger, NSTextAlignment) {
  NSTextAlignmentLeft = 0,
  NSTextAlignmentCenter = 1,
  NSTextAlignmentRight = 2,
};

@interface NSCell : NSObject
@property BOOL usesSingleLineMode;
@property BOOL wraps;
@property(getter=isScrollable) BOOL scrollable;
@end

@interface NSControl : NSView
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property(nullable, strong) __kindof NSCell* cell;
@property(nullable, strong) NSFont* font;
@property(copy) NSString* stringValue;
@property NSTextAlignment alignment;
@property NSLineBreakMode lineBreakMode;
@end

@interface NSTextField : NSControl
@property(nullable, copy) NSColor* textColor;
@property NSInteger maximumNumberOfLines;
+ (instancetype)labelWithString:(NSString*)text;
+ (instancetype)wrappingLabelWithString:(NSString*)text;
@end

typedef NS_ENUM(NSUInteger, NSBezelStyle) { NSBezelStyleRounded = 1 };
typedef NS_ENUM(NSUInteger, NSCellImagePosition) { NSImageOnly = 1 };
@interface NSButton : NSControl
@property(copy) NSString* title;
@property(copy) NSString* keyEquivalent;
@property NSBezelStyle bezelStyle;
@property(nullable, strong) NSImage* image;
@property NSCellImagePosition imagePosition;
@property(nullable, copy) NSString* toolTip;
+ (instancetype)buttonWithTitle:(NSString*)title target:(nullable id)target action:(nullable SEL)action;
@end

typedef NS_ENUM(NSUInteger, NSImageScaling) { NSImageScaleProportionallyUpOrDown = 3 };
@interface NSImageView : NSControl
@property(nullable, strong) NSImage* image;
@property NSImageScaling imageScaling;
@end

@interface NSMutableParagraphStyle : NSObject
@property NSTextAlignment alignment;
@end

extern "C" NSAttributedStringKey const NSFontAttributeName, NSForegroundColorAttributeName,
    NSUnderlineStyleAttributeName, NSParagraphStyleAttributeName, NSLinkAttributeName;
typedef NS_ENUM(NSInteger, NSUnderlineStyle) { NSUnderlineStyleSingle = 1 };

@interface NSTextContainer : NSObject
@property NSSize size;
@property BOOL widthTracksTextView;
@end

@interface NSTextStorage : NSAttributedString
- (void)setAttributedString:(NSAttributedString*)text;
@end

@class NSTextView;
@protocol NSTextViewDelegate <NSObject>
@optional
- (BOOL)textView:(NSTextView*)view clickedOnLink:(id)link atIndex:(NSUInteger)index;
@end

@interface NSTextView : NSView
@property(copy) NSString* string;
@property(nullable, strong) NSFont* font;
@property(getter=isEditable) BOOL editable;
@property(getter=isSelectable) BOOL selectable;
@property(getter=isRichText) BOOL richText;
@property BOOL drawsBackground;
@property NSSize textContainerInset;
@property NSSize minSize;
@property NSSize maxSize;
@property(getter=isVerticallyResizable) BOOL verticallyResizable;
@property(getter=isHorizontallyResizable) BOOL horizontallyResizable;
@property(nullable, strong) NSTextContainer* textContainer;
@property(nullable, readonly, strong) NSTextStorage* textStorage;
@property(nullable, weak) id<NSTextViewDelegate> delegate;
@property BOOL allowsUndo;
@property(nullable, readonly, strong) NSUndoManager* undoManager;
- (void)cut:(nullable id)sender;
- (void)copy:(nullable id)sender;
- (void)paste:(nullable id)sender;
- (void)selectAll:(nullable id)sender;
@end

@interface NSScrollView : NSView
@property BOOL hasVerticalScroller;
@property BOOL hasHorizontalScroller;
@property(nullable, strong) __kindof NSView* documentView;
@end

typedef NS_ENUM(NSInteger, NSUserInterfaceLayoutOrientation) {
  NSUserInterfaceLayoutOrientationHorizontal = 0
};
typedef NS_ENUM(NSInteger, NSLayoutAttribute) { NSLayoutAttributeCenterY = 10 };
typedef NS_ENUM(NSInteger, NSStackViewDistribution) { NSStackViewDistributionGravityAreas = -1 };
@interface NSStackView : NSView
@property NSUserInterfaceLayoutOrientation orientation;
@property NSLayoutAttribute alignment;
@property NSStackViewDistribution distribution;
@property CGFloat spacing;
+ (instancetype)stackViewWithViews:(NSArray<NSView*>*)views;
@end

NS_ASSUME_NONNULL_END
