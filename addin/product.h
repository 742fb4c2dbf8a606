#pragma once

// Product data, chosen when the add-in is built.

#ifndef SCRIVO_SUPPORT_MAIL
#define SCRIVO_SUPPORT_MAIL "support@scrivo.example"
#endif
#ifndef SCRIVO_WEB_SERVER
#define SCRIVO_WEB_SERVER "www.scrivo.example"
#endif
#ifndef SCRIVO_VERSION_CHECK
#define SCRIVO_VERSION_CHECK "Scrivo.VersionCheck"
#endif

namespace scrivo {

// Where error reports go.
constexpr const char* kSupportMail = SCRIVO_SUPPORT_MAIL;
// Host name of the product's web site.
constexpr const char* kWebServer = SCRIVO_WEB_SERVER;
// The product's home page.
constexpr const char* kHomePage = "http://" SCRIVO_WEB_SERVER "/";
// The programmatic identifier of the component that looks for a newer version, which is installed
// separately, if at all.
constexpr const char* kVersionCheckProgId = SCRIVO_VERSION_CHECK;

// The programmatic identifier under which the host creates the add-in.
constexpr const char* kProgId = "Kestrel.Connect";
constexpr const char* kFriendlyName = "ScrivoBuilder";
constexpr const char* kDescription = "Front Page site to Microsoft Help Workshop converter";
// Load now and at every later start.
constexpr int kLoadBehavior = 3;
// Where the host looks for its add-ins, below HKEY_LOCAL_MACHINE or HKEY_CURRENT_USER.
constexpr const char* kHostRoot = "Software\\Microsoft\\Office\\SharePoint Designer";

}  // namespace scrivo
