#import "palette.h"

#import "pictures.h"
#import "theme.h"

namespace {

NSDictionary* fonts() {
    return @{
        @"NSFont" : @"OpenSans",
        @"NSBoldFont" : @"OpenSans-Semibold",
        @"NSUserFont" : @"OpenSans",
        @"NSLabelFont" : @"OpenSans",
        @"NSMenuFont" : @"OpenSans",
        @"NSMessageFont" : @"OpenSans",
        @"NSTitleBarFont" : @"OpenSans-Semibold",
        @"NSToolTipsFont" : @"OpenSans",
        @"NSControlContentFont" : @"OpenSans",
        @"NSFontSize" : @"13",
        @"NSBoldFontSize" : @"13",
        @"NSUserFontSize" : @"13",
        @"NSLabelFontSize" : @"13",
        @"NSMenuFontSize" : @"13",
        @"NSMessageFontSize" : @"13",
        @"NSControlContentFontSize" : @"13",
    };
}

NSDictionary* colors() {
    NSString* ink = @"0.11 0.11 0.15";
    NSString* paper = @"1 1 1";
    NSString* window = @"0.96 0.96 0.97";
    NSString* line = @"0.85 0.85 0.88";
    NSString* accent = @"0.29 0.25 0.72";
    return @{
        @"windowBackgroundColor" : window,
        @"controlBackgroundColor" : paper,
        @"textBackgroundColor" : paper,
        @"controlColor" : window,
        @"gridColor" : line,
        @"controlDarkShadowColor" : line,
        @"controlShadowColor" : @"0.72 0.72 0.76",
        @"knobColor" : @"0.78 0.78 0.82",
        @"scrollBarColor" : @"0.62 0.62 0.68",
        @"labelColor" : ink,
        @"textColor" : ink,
        @"controlTextColor" : ink,
        @"secondaryLabelColor" : @"0.40 0.40 0.46",
        @"disabledControlTextColor" : @"0.62 0.62 0.67",
        @"selectedControlColor" : @"0.90 0.90 0.93",
        @"selectedTextBackgroundColor" : @"0.83 0.82 0.95",
        @"selectedTextColor" : ink,
        @"keyboardFocusIndicatorColor" : accent,
        @"alternateSelectedControlColor" : accent,
        @"alternateSelectedControlTextColor" : paper,
        @"selectedMenuItemColor" : accent,
        @"selectedMenuItemTextColor" : paper,
    };
}

NSDictionary* habits() {
    return @{
        @"NSMenuInterfaceStyle" : @"NSWindows95InterfaceStyle",
        @"NSScrollViewInterfaceStyle" : @"NSMacintoshInterfaceStyle",
        @"GSSuppressAppIcon" : @"YES",
        @"GSAppOwnsMiniwindow" : @"NO",
        // The Control key gives commands, as it does in other applications here.
        @"GSFirstCommandKey" : @"Control_L",
        @"GSSecondCommandKey" : @"Control_R",
        @"GSFirstAlternateKey" : @"Alt_L",
        @"GSSecondAlternateKey" : @"Alt_R",
        @"GSFirstControlKey" : @"VoidSymbol",
        @"GSSecondControlKey" : @"VoidSymbol",
        @"GSCommandKeyString" : @"Ctrl+",
        @"GSAlternateKeyString" : @"Alt+",
    };
}

}  // namespace

void registerPalette() {
    NSAutoreleasePool* pool = [[NSAutoreleasePool alloc] init];
    NSUserDefaults* defaults = [NSUserDefaults standardUserDefaults];
    [defaults registerDefaults:fonts()];
    [defaults registerDefaults:colors()];
    [defaults registerDefaults:habits()];
    [GSTheme setTheme:[[[MorvellaTheme alloc] initWithBundle:[NSBundle mainBundle]] autorelease]];
    registerPictures();
    [pool release];
}
