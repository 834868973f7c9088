/// GNUstep asks a library for all types that it knows, which loads more than a hundred modules of
/// it. The installer's own pictures are PNG files, GNUstep's are TIFF files, and none is ever
/// pasted.
@implementation NSImage (Complement)

+ (NSArray*)imageFileTypes {
    return @[ @"png", @"tiff" ];
}

+ (NSArray*)imagePasteboardTypes {
    return @[ NSTIFFPboardType ];
}

@end
