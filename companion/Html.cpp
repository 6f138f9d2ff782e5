#include "companion/Html.h"

#include "companion/Words.h"

namespace tavio::companion {
namespace {

constexpr wchar_t kLook[] =
    LR"css(
:root{color-scheme:light dark;--page:#f6f7f9;--card:#fff;--ink:#1c2430;--soft:#5d6a7c;--line:#dfe4ea;--good:#17723b;
--goodback:#e4f4ea;--bad:#a1281c;--badback:#fbeae8;--note:#7a5200;--noteback:#fdf3dc;--code:#eef1f5}
@media(prefers-color-scheme:dark){:root{--page:#14181e;--card:#1d232b;--ink:#e4e9f0;--soft:#9aa7b8;--line:#323b47;
--good:#7fd6a0;--goodback:#17301f;--bad:#f2a097;--badback:#3a1d1a;--note:#ecc573;--noteback:#332810;--code:#262e38}}
*{box-sizing:border-box}
body{margin:0;background:var(--page);color:var(--ink);font:15px/1.55 "Segoe UI","Microsoft YaHei",system-ui,sans-serif}
main{max-width:1120px;margin:0 auto;padding:24px 20px 48px}
h1{font-size:22px;margin:0}h2{font-size:16px;margin:28px 0 10px}
.sub{color:var(--soft);margin:2px 0 20px}
.card{background:var(--card);border:1px solid var(--line);border-radius:10px;padding:14px 18px}
dl{display:grid;grid-template-columns:max-content 1fr;gap:6px 18px;margin:0}
dt{color:var(--soft)}dd{margin:0;white-space:pre-wrap;overflow-wrap:anywhere}
.title{font-weight:600}
.sums{display:grid;grid-template-columns:repeat(4,1fr);gap:12px}
.sums b{display:block;font-size:22px}.sums small{color:var(--bad);display:block;overflow-wrap:anywhere}
table{width:100%;border-collapse:collapse}
th,td{text-align:left;padding:8px 10px;border-top:1px solid var(--line);vertical-align:top;overflow-wrap:anywhere}
thead th{border-top:0;color:var(--soft);font-weight:500;padding-top:0}
tbody th{font-weight:600}
.yes,.no,.note{display:inline-block;border-radius:6px;padding:1px 8px}
.yes{color:var(--good);background:var(--goodback)}
.no{color:var(--bad);background:var(--badback)}
.note{color:var(--note);background:var(--noteback)}
.notes{margin:10px 0 0;padding:0;list-style:none}.notes li{margin-top:6px}
details{margin-top:8px}summary{cursor:pointer;color:var(--soft)}
pre{background:var(--code);border-radius:8px;padding:12px;margin:8px 0 0;overflow:auto;font:13px/1.5 Consolas,monospace;
white-space:pre-wrap;overflow-wrap:anywhere}
code{font:13px Consolas,monospace}
.tree td{padding:4px 8px}.tree td:first-child{white-space:nowrap;text-align:right;color:var(--soft);width:1%}
.tree summary{color:inherit}.tree .entry{font-weight:600}.tree details{margin:0}
.bar{display:block;height:3px;border-radius:2px;background:var(--good);margin-left:auto}
@media(max-width:720px){main{padding:16px 12px 32px}.sums{grid-template-columns:repeat(2,1fr)}
dl{grid-template-columns:1fr;gap:2px}dd{margin-bottom:8px}
.grid thead{display:none}.grid,.grid tbody,.grid tr,.grid th,.grid td{display:block}
.grid tr{border-top:1px solid var(--line);padding:8px 0}.grid th,.grid td{border:0;padding:2px 0}
.grid tr:first-child{border-top:0;padding-top:0}.grid td:empty{display:none}.grid td::before{content:attr(data-name) " ";color:var(--soft)}}
)css";

const wchar_t* Escaped(Char unit) noexcept {
  switch (unit) {
    case L'<':
      return L"&lt;";
    case L'>':
      return L"&gt;";
    case L'&':
      return L"&amp;";
    case L'"':
      return L"&quot;";
    case L'\'':
      return L"&#39;";
    default:
      return nullptr;
  }
}

}  // namespace

Html Html::Page(const Text& title) {
  Html html;
  html.Raw(L"<!doctype html>\n<html lang=\"")
      .Raw(SpeaksEnglish() ? L"en" : L"zh")
      .Raw(L"\"><head><meta charset=\"utf-8\">");
  html.Raw(L"<meta name=\"viewport\" content=\"width=device-width,initial-scale=1\"><title>").Plain(title);
  html.Raw(L"</title><style>").Raw(kLook).Raw(L"</style></head>\n<body><main>\n");
  return html;
}

Html& Html::Plain(TextView text) {
  for (const Char unit : text) {
    // Control characters are shown as pictures of them: a page must not hold them.
    const bool control = unit < L' ' && unit != L'\n' && unit != L'\t' && unit != L'\r';
    if (const auto* escaped = Escaped(unit)) {
      page_ += escaped;
    } else {
      page_ += control ? static_cast<Char>(0x2400 + unit) : unit;
    }
  }
  return *this;
}

Html& Html::Open(TextView tag, TextView style) {
  Raw(L"<").Raw(tag);
  if (!style.empty()) Raw(L" class=\"").Raw(style).Raw(L"\"");
  return Raw(L">");
}

Html& Html::Close(TextView tag) { return Raw(L"</").Raw(tag).Raw(L">\n"); }

Html& Html::Element(TextView tag, TextView text, TextView style) { return Open(tag, style).Plain(text).Close(tag); }

Text Html::End() { return std::move(Raw(L"</main></body></html>\n").page_); }

}  // namespace tavio::companion
