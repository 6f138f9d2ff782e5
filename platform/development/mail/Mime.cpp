#include "development/mail/Mime.h"

#include <windows.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>

#include "development/storage/Files.h"
#include "foundation/values/CodePage.h"
#include "foundation/values/Error.h"
#include "foundation/values/Text.h"

namespace tavio::development {
namespace {

constexpr UINT kGb = 936;
constexpr std::size_t kLine = 76;

// Texts in the character set of one mail.
class Encoder {
 public:
  explicit Encoder(const Mail& mail) {
    if (ToUpper(mail.charset) != L"GB2312") return;
    if (Fits(mail.subject) && Fits(mail.body) && Fits(mail.fromName)) codePage_ = kGb;
  }

  const char* Name() const { return codePage_ == kGb ? "GB2312" : "UTF-8"; }
  std::string Bytes(TextView text) const { return ToCodePage(codePage_, text); }

 private:
  static bool Fits(TextView text) {
    bool replaced = false;
    ToCodePage(kGb, text, WC_NO_BEST_FIT_CHARS, &replaced);
    return !replaced;
  }

  UINT codePage_ = CP_UTF8;
};

bool IsPlain(TextView text) {
  return std::all_of(text.begin(), text.end(), [](Char unit) { return unit >= L' ' && unit <= L'~'; });
}

Text OnOneLine(Text text) {
  std::replace_if(
      text.begin(), text.end(), [](Char unit) { return unit < L' '; }, L' ');
  return text;
}

// How many units of `text` make up its first encoded word; a surrogate pair stays together.
std::size_t WordLength(TextView text) {
  constexpr std::size_t kUnits = 12;  // 36 bytes of UTF-8 are 48 characters of base64
  if (text.size() <= kUnits) return text.size();
  return IS_HIGH_SURROGATE(text[kUnits - 1]) ? kUnits - 1 : kUnits;
}

std::string HeaderText(const Encoder& encoder, const Text& raw) {
  const Text line = OnOneLine(raw);
  if (IsPlain(line) && line.size() < kLine && line.find(L"=?") == Text::npos) return ToUtf8(line);
  std::string words;
  for (TextView rest = line; !rest.empty();) {
    const std::size_t length = WordLength(rest);
    if (!words.empty()) words += "\r\n ";
    words += std::string("=?") + encoder.Name() + "?B?" + Base64(encoder.Bytes(rest.substr(0, length))) + "?=";
    rest.remove_prefix(length);
  }
  return words;
}

// A display name beside its address. A plain one is quoted, since a comma or a dot would end it.
std::string DisplayName(const Encoder& encoder, const Text& name) {
  if (name.empty()) return {};
  if (!IsPlain(name) || name.size() >= kLine) return HeaderText(encoder, name) + "\r\n ";
  std::string quoted = "\"";
  for (const char c : ToUtf8(name)) quoted += (c == '"' || c == '\\') ? std::string{'\\', c} : std::string{c};
  return quoted + "\"\r\n ";
}

std::string Date() {
  static constexpr const char* kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
  static constexpr const char* kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                            "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
  SYSTEMTIME now;
  GetSystemTime(&now);
  char text[64];
  std::snprintf(text, sizeof text, "%s, %02d %s %04d %02d:%02d:%02d +0000", kDays[now.wDayOfWeek], now.wDay,
                kMonths[now.wMonth - 1], now.wYear, now.wHour, now.wMinute, now.wSecond);
  return text;
}

// Differs from call to call and from process to process.
std::string Unique() {
  static std::uint32_t calls = 0;
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  char text[64];
  std::snprintf(text, sizeof text, "%08lx%08lx.%lx.%x", now.dwHighDateTime, now.dwLowDateTime, GetCurrentProcessId(),
                ++calls);
  return text;
}

std::string PercentEncoded(const std::string& bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    char code[4] = {c, 0};
    const bool plain = byte < 128 && (std::isalnum(byte) || c == '.' || c == '-' || c == '_');
    if (!plain) std::snprintf(code, sizeof code, "%%%02X", byte);
    text += code;
  }
  return text;
}

std::string Lines(const std::string& base64) {
  std::string lines;
  for (std::size_t i = 0; i < base64.size(); i += kLine) lines += base64.substr(i, kLine) + "\r\n";
  return lines;
}

std::string Part(const std::string& type, const std::string& disposition, const std::string& bytes) {
  return "Content-Type: " + type + "\r\n" + disposition + "Content-Transfer-Encoding: base64\r\n\r\n" +
         Lines(Base64(bytes));
}

std::string BodyPart(const Encoder& encoder, const Mail& mail) {
  const std::string type = mail.isHtml ? "text/html" : "text/plain";
  return Part(type + "; charset=" + encoder.Name(), "", encoder.Bytes(mail.body));
}

std::string AttachmentPart(const Attachment& attachment) {
  const std::string name = PercentEncoded(ToUtf8(attachment.name));
  return Part("application/octet-stream", "Content-Disposition: attachment;\r\n filename*=UTF-8''" + name + "\r\n",
              attachment.bytes);
}

std::string Headers(const Encoder& encoder, const Mail& mail) {
  std::string to;
  for (const Text& recipient : mail.recipients) to += (to.empty() ? "<" : ",\r\n <") + ToUtf8(recipient) + ">";
  const std::string from = ToUtf8(mail.from);
  return "Date: " + Date() + "\r\nFrom: " + DisplayName(encoder, mail.fromName) + "<" + from + ">\r\nTo: " + to +
         "\r\nSubject: " + HeaderText(encoder, mail.subject) + "\r\nMessage-ID: <" + Unique() +
         from.substr(from.find('@')) + ">\r\nMIME-Version: 1.0\r\n";
}

}  // namespace

bool IsAddress(TextView address) {
  const bool clean = std::none_of(address.begin(), address.end(), [](Char unit) {
    return unit <= L' ' || unit == 0x7F || unit == L'<' || unit == L'>' || unit == L',';
  });
  return clean && address.find(L'@') != TextView::npos;
}

void CheckAddresses(const Mail& mail) {
  const auto refuse = [](const Text& why) { throw Error(E_INVALIDARG, L"DevPlatform.Mail", why); };
  if (!IsAddress(mail.from)) refuse(L"发件人地址无效: " + mail.from);
  if (mail.recipients.empty()) refuse(L"没有收件人");
  for (const Text& recipient : mail.recipients) {
    if (!IsAddress(recipient)) refuse(L"收件人地址无效: " + recipient);
  }
}

std::vector<Text> SplitAddresses(TextView list) {
  std::vector<Text> addresses;
  while (!list.empty()) {
    const auto end = std::min(list.find(L';'), list.size());
    const TextView address = TrimBlanks(list.substr(0, end));
    if (!address.empty()) addresses.emplace_back(address);
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return addresses;
}

std::string Compose(const Mail& mail) {
  const Encoder encoder(mail);
  std::string text = Headers(encoder, mail);
  if (mail.attachments.empty()) return text + BodyPart(encoder, mail);
  const std::string boundary = "=_" + Unique();
  text += "Content-Type: multipart/mixed; boundary=\"" + boundary + "\"\r\n\r\n";
  text += "--" + boundary + "\r\n" + BodyPart(encoder, mail);
  for (const auto& attachment : mail.attachments) text += "--" + boundary + "\r\n" + AttachmentPart(attachment);
  return text + "--" + boundary + "--\r\n";
}

std::string Base64(std::string_view bytes) {
  static constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t have = std::min<std::size_t>(bytes.size() - i, 3);
    std::uint32_t group = 0;
    for (std::size_t k = 0; k < 3; ++k) group = group << 8 | (k < have ? static_cast<unsigned char>(bytes[i + k]) : 0u);
    for (std::size_t k = 0; k < 4; ++k) text += k <= have ? kDigits[group >> (18 - 6 * k) & 63] : '=';
  }
  return text;
}

Attachment ReadAttachment(const Text& path) { return {path.substr(path.find_last_of(L"\\/") + 1), ReadWhole(path)}; }

}  // namespace tavio::development
