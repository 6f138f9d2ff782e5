#pragma once

#include <string>
#include <vector>

#include "foundation/values/Text.h"

namespace tavio::development {

struct Attachment {
  Text name;
  std::string bytes;
};

// A mail as RFC 5322 text in the making.
struct Mail {
  Text from;
  Text fromName;
  std::vector<Text> recipients;
  Text subject;
  Text body;
  bool isHtml = false;
  Text charset = L"UTF-8";  // "GB2312" is honoured if the texts can be written in it; all else is UTF-8
  std::vector<Attachment> attachments;
};

// Whether an address can stand in a header and in an SMTP command: it has an "@", and no blank, control character, "<",
// ">" or ",".
bool IsAddress(TextView address);

// Raises Error unless the mail has recipients and all its addresses are such.
void CheckAddresses(const Mail& mail);

// The parts of a list of addresses between semicolons, trimmed, without empty ones.
std::vector<Text> SplitAddresses(TextView list);

// The whole message with CR LF line ends: encoded headers, base64 bodies, multipart/mixed if there are attachments.
// Line breaks in names and subjects become blanks.
std::string Compose(const Mail& mail);

std::string Base64(std::string_view bytes);

// A file as an attachment under its own name; raises Error if it cannot be read.
Attachment ReadAttachment(const Text& path);

}  // namespace tavio::development
