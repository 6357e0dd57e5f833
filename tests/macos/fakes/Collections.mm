// Collections that work, because the product computes with them.
#include <vector>

#import <Foundation/Foundation.h>

@implementation NSArray {
 @protected
  std::vector<id> objects_;
}
+ (instancetype)array {
  return [[self alloc] init];
}
+ (instancetype)arrayWithObjects:(const id[])objects count:(NSUInteger)count {
  NSArray* const array = [[self alloc] init];
  array->objects_.assign(objects, objects + count);
  return array;
}
- (NSUInteger)count {
  return objects_.size();
}
- (id)firstObject {
  return objects_.empty() ? nil : objects_.front();
}
- (id)objectAtIndexedSubscript:(NSUInteger)index {
  return objects_.at(index);
}
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState*)state
                                  objects:(id __unsafe_unretained[])buffer
                                    count:(NSUInteger)count {
  static unsigned long unchanged = 0;
  NSUInteger given = 0;
  for (; given < count && state->state < objects_.size(); ++given) buffer[given] = objects_[state->state++];
  state->itemsPtr = buffer;
  state->mutationsPtr = &unchanged;
  return given;
}
@end

@implementation NSMutableArray
- (void)addObject:(id)object {
  objects_.push_back(object);
}
@end

@implementation NSDictionary {
  std::vector<std::pair<id, id>> entries_;
}
+ (instancetype)dictionaryWithObjects:(const id[])objects forKeys:(const id[])keys count:(NSUInteger)count {
  NSDictionary* const dictionary = [[NSDictionary alloc] init];
  for (NSUInteger i = 0; i < count; ++i) dictionary->entries_.emplace_back(keys[i], objects[i]);
  return dictionary;
}
- (id)objectForKeyedSubscript:(id)key {
  for (const auto& [own, value] : entries_) {
    if ([own isEqual:key]) return value;
  }
  return nil;
}
@end
