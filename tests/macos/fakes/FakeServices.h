#pragma once

#import <Foundation/Foundation.h>
#import <ServiceManagement/SMAppService.h>

#include <QString>
#include <QStringList>

namespace kestrelbay::macos {

/// What the system says it is; 15.1.0 until told otherwise.
void setSystemVersion(NSOperatingSystemVersion version);

/// The sounds there are; none until told.
void setSounds(const QStringList &names);

/// A login-item service with nothing registered; tells asking twice a mistake.
void resetLoginItems();
void setLoginItemStatus(SMAppServiceStatus status);
/// From now on every request fails for that reason; none when empty.
void setLoginItemRefusal(const QString &reason);

/// Has the user given the permission? No until told.
void setProcessTrusted(bool trusted);

}  // namespace kestrelbay::macos
