#pragma once

// Stands for <AppKit/NSWorkspace.h>.

#import <Foundation/Foundation.h>

@class NSImage;
@class NSRunningApplication;

@interface NSWorkspaceOpenConfiguration : NSObject {
    NSArray *arguments_;
    BOOL createsNewApplicationInstance_;
}
+ (instancetype)configuration;
@property(copy) NSArray *arguments;
@property BOOL createsNewApplicationInstance;
@end

@interface NSWorkspace : NSObject
+ (NSWorkspace *)sharedWorkspace;
@property(readonly, copy) NSArray *runningApplications;
- (BOOL)openURL:(NSURL *)url;
- (void)openURLs:(NSArray *)urls
    withApplicationAtURL:(NSURL *)applicationURL
           configuration:(NSWorkspaceOpenConfiguration *)configuration
       completionHandler:(void (^)(NSRunningApplication *app, NSError *error))completionHandler;
- (void)openApplicationAtURL:(NSURL *)applicationURL
               configuration:(NSWorkspaceOpenConfiguration *)configuration
           completionHandler:(void (^)(NSRunningApplication *app, NSError *error))completionHandler;
- (BOOL)selectFile:(NSString *)fullPath inFileViewerRootedAtPath:(NSString *)rootFullPath;
- (NSImage *)iconForFile:(NSString *)fullPath;
@end
