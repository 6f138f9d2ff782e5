#include "development/print/Pdf.h"

#include <algorithm>
#include <cstdio>

namespace tavio::development {
namespace {

constexpr std::size_t kLinesPerPage = 40;

template <class... Values>
std::string Format(const char* pattern, Values... values) {
  char text[256];
  std::snprintf(text, sizeof text, pattern, values...);
  return text;
}

// Objects written one after the other, numbered from 1, with the table of their beginnings.
class Document {
 public:
  void Add(const std::string& object) {
    offsets_.push_back(text_.size());
    text_ += Format("%zu 0 obj\n", offsets_.size()) + object + "\nendobj\n";
  }
  std::string Finish() {
    const std::size_t table = text_.size();
    text_ += Format("xref\n0 %zu\n0000000000 65535 f \n", offsets_.size() + 1);
    for (const std::size_t offset : offsets_) text_ += Format("%010zu 00000 n \n", offset);
    text_ += Format("trailer\n<< /Size %zu /Root 1 0 R >>\nstartxref\n%zu\n%%%%EOF\n", offsets_.size() + 1, table);
    return std::move(text_);
  }

 private:
  std::string text_ = "%PDF-1.4\n%\xE2\xE3\xCF\xD3\n";
  std::vector<std::size_t> offsets_;
};

// A text in the font's encoding: 16-bit numbers, the higher byte first.
std::string Hex(TextView text) {
  std::string digits = "<";
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto unit = static_cast<unsigned>(text[i]);
    const bool high = unit >= 0xD800 && unit < 0xDC00;
    const bool surrogate = unit >= 0xD800 && unit < 0xE000;
    digits += Format("%04X", surrogate ? unsigned{'?'} : unit);
    if (high && i + 1 < text.size()) ++i;
  }
  return digits + ">";
}

std::string Page(const Text& title, const std::vector<Text>& lines, std::size_t first) {
  std::string content = "BT\n/F1 16 Tf\n56 780 Td\n" + Hex(title) + " Tj\n/F1 11 Tf\n0 -14 Td\n";
  const std::size_t end = std::min(lines.size(), first + kLinesPerPage);
  for (std::size_t i = first; i < end; ++i) content += "0 -17 Td\n" + Hex(lines[i]) + " Tj\n";
  content += "ET";
  return Format("<< /Length %zu >>\nstream\n", content.size()) + content + "\nendstream";
}

void AddFont(Document& document) {
  document.Add(
      "<< /Type /Font /Subtype /Type0 /BaseFont /STSong-Light /Encoding /UniGB-UCS2-H /DescendantFonts [4 0 R] >>");
  document.Add(
      "<< /Type /Font /Subtype /CIDFontType0 /BaseFont /STSong-Light /FontDescriptor 5 0 R /DW 1000 /W [1 95 500] "
      "/CIDSystemInfo << /Registry (Adobe) /Ordering (GB1) /Supplement 2 >> >>");
  document.Add(
      "<< /Type /FontDescriptor /FontName /STSong-Light /Flags 6 /FontBBox [-25 -254 1000 880] /ItalicAngle 0 "
      "/Ascent 880 /Descent -120 /CapHeight 880 /StemV 93 >>");
}

}  // namespace

std::string MakePdf(const Text& title, const std::vector<Text>& lines) {
  constexpr std::size_t kBeforePages = 5;  // catalogue, page tree and the three objects of the font
  const std::size_t pages = std::max<std::size_t>(1, (lines.size() + kLinesPerPage - 1) / kLinesPerPage);
  std::string kids;
  for (std::size_t i = 0; i < pages; ++i) kids += Format("%zu 0 R ", kBeforePages + 1 + 2 * i);
  Document document;
  document.Add("<< /Type /Catalog /Pages 2 0 R >>");
  document.Add("<< /Type /Pages /Count " + std::to_string(pages) + " /Kids [" + kids + "] >>");
  AddFont(document);
  for (std::size_t i = 0; i < pages; ++i) {
    document.Add(
        Format("<< /Type /Page /Parent 2 0 R /MediaBox [0 0 595 842] /Resources << /Font << /F1 3 0 R >> >> "
               "/Contents %zu 0 R >>",
               kBeforePages + 2 + 2 * i));
    document.Add(Page(title, lines, i * kLinesPerPage));
  }
  return document.Finish();
}

}  // namespace tavio::development
