#include "platform/cocoa/user_defaults.h"

#include "platform/cocoa/conversions.h"

namespace morvella {

std::string CocoaDefaultsValue::text() const {
    // The description of a string is the string itself.
    return textOf([object() description]);
}

std::shared_ptr<DefaultsValue> CocoaUserDefaults::objectForKey(const std::string& key) const {
    return handleOf<CocoaDefaultsValue>([defaults_.get() objectForKey:stringOf(key)]);
}

std::shared_ptr<DefaultsValue> CocoaUserDefaults::valueForKey(const std::string& key) const {
    return handleOf<CocoaDefaultsValue>([defaults_.get() valueForKey:stringOf(key)]);
}

void CocoaUserDefaults::setValueForKey(const std::shared_ptr<DefaultsValue>& value,
                                       const std::string& key) {
    [defaults_.get() setValue:objectOf(value.get()) forKey:stringOf(key)];
}

std::shared_ptr<UserDefaults> CocoaUserDefaultsSuites::open(const std::string& suiteName) {
    NSUserDefaults* suite =
        [[[NSUserDefaults alloc] initWithSuiteName:stringOf(suiteName)] autorelease];
    return std::make_shared<CocoaUserDefaults>(suite);
}

}  // namespace morvella
