#pragma once

// Stands for <AppKit/NSWorkspace.h>.

#import <Foundation/Foundation.h>

@class NSImage;
@class NSRunningApplication;

@interface NSWorkspaceOpenConfiguration : NSObject {
    NSArray<NSString *> *arguments_;
    BOOL activates_;
    BOOL createsNewApplicationInstance_;
}
+ (nonnull instancetype)configuration;
@property(copy, nonnull) NSArray<NSString *> *arguments;
@property BOOL activates;
@property BOOL createsNewApplicationInstance;
@end

extern NSNotificationName NSWorkspaceDidWakeNotification;
extern NSNotificationName NSWorkspaceScreensDidWakeNotification;
extern NSNotificationName NSWorkspaceSessionDidBecomeActiveNotification;

@interface NSWorkspace : NSObject
+ (nonnull NSWorkspace *)sharedWorkspace;
/// The only one that tells of the notifications above.
@property(readonly, strong, nonnull) NSNotificationCenter *notificationCenter;
@property(readonly, copy, nonnull) NSArray<NSRunningApplication *> *runningApplications;
- (BOOL)openURL:(nonnull NSURL *)url;
- (void)openURLs:(nonnull NSArray<NSURL *> *)urls
    withApplicationAtURL:(nonnull NSURL *)applicationURL
           configuration:(nonnull NSWorkspaceOpenConfiguration *)configuration
       completionHandler:(nullable void (^)(NSRunningApplication *_Nullable app,
                                            NSError *_Nullable error))completionHandler;
- (void)openApplicationAtURL:(nonnull NSURL *)applicationURL
               configuration:(nonnull NSWorkspaceOpenConfiguration *)configuration
           completionHandler:(nullable void (^)(NSRunningApplication *_Nullable app,
                                                NSError *_Nullable error))completionHandler;
- (BOOL)selectFile:(nullable NSString *)fullPath
    inFileViewerRootedAtPath:(nonnull NSString *)rootFullPath;
- (nonnull NSImage *)iconForFile:(nonnull NSString *)fullPath;
@end
