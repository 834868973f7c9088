@implementation NSImage (Complement)

/// GNUstep's own asks a library for all types that it knows, which loads more than a hundred
/// modules of it. The installer's own pictures are PNG files, GNUstep's are TIFF files.
+ (NSArray*)imageFileTypes {
    return @[ @"png", @"tiff" ];
}

@end
