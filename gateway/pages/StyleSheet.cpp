#include "pages/PageFrame.h"

namespace vorq::gateway {
namespace {

// The colours of the desktop program.
constexpr auto kColours = R"css(:root {
  color-scheme: dark light;
  --ink: #F3F4F8; --ink2: #BDC1CD; --ink3: #A3A8B6;
  --window: #17181C; --card: #212329; --well: #1A1B20; --soft: rgba(255,255,255,.09);
  --softHover: rgba(255,255,255,.14); --softDown: rgba(255,255,255,.20);
  --edge: rgba(255,255,255,.085); --edge2: rgba(255,255,255,.16); --rim: #747987;
  --accent: #4A65EA; --accentHover: #4F6AF0; --accentDown: #3E56CF; --accentInk: #AEBDFF;
  --focus: #8EA3FF; --good: #62D394; --goodSoft: rgba(44,159,95,.17);
  --bad: #FF8A85; --badSoft: rgba(229,85,79,.16);
  --shadow: 0 24px 72px rgba(0,0,0,.52), 0 4px 14px rgba(0,0,0,.26);
}
@media (prefers-color-scheme: light) {
  :root {
    --ink: #14161D; --ink2: #4B5060; --ink3: #626879;
    --window: #F3F4F7; --card: #FFFFFF; --well: #FFFFFF; --soft: rgba(13,18,33,.06);
    --softHover: rgba(13,18,33,.10); --softDown: rgba(13,18,33,.15);
    --edge: rgba(13,18,33,.10); --edge2: rgba(13,18,33,.17); --rim: #8A8F9E;
    --accent: #3F5AE6; --accentHover: #354FD6; --accentDown: #2B43BF; --accentInk: #2E48CC;
    --focus: #3F5AE6; --good: #16703D; --goodSoft: rgba(42,149,86,.12);
    --bad: #BF2B2B; --badSoft: rgba(213,59,56,.10);
    --shadow: 0 24px 72px rgba(15,20,41,.18), 0 4px 14px rgba(15,20,41,.10);
  }
}
)css";

constexpr auto kLayout = R"css(* { box-sizing: border-box; }
body { margin: 0; background: var(--window); color: var(--ink); min-height: 100vh;
  font: 500 14.5px/1.45 Inter, system-ui, sans-serif; }
header { display: flex; flex-wrap: wrap; gap: 8px 20px; align-items: center;
  justify-content: space-between; padding: 20px 24px 0; max-width: 688px; margin: 0 auto; }
.brand { display: flex; align-items: center; gap: 10px; font-size: 16.5px; font-weight: 700; }
nav { display: flex; flex-wrap: wrap; gap: 16px; font-size: 13px; }
main { margin: 32px auto 48px; padding: 0 24px; max-width: 688px; }
.narrow header { justify-content: center; padding-top: 9vh; }
.narrow main { max-width: 468px; margin-top: 24px; }
h1 { font-size: 26px; line-height: 1.2; letter-spacing: -.5px; margin: 0 0 8px; }
.card h1 { font-size: 19px; letter-spacing: -.3px; margin-bottom: 16px; }
h2 { font-size: 13.5px; margin: 28px 4px 8px; color: var(--ink2); }
p { margin: 0 0 14px; color: var(--ink2); }
.card { background: var(--card); border: 1px solid var(--edge); border-bottom-color: var(--edge2);
  border-radius: 18px; padding: 20px; }
.narrow main > .card { border-radius: 26px; padding: 28px; box-shadow: var(--shadow); }
.card > :last-child { margin-bottom: 0; }
.pair { display: grid; grid-template-columns: 1fr 1fr; gap: 0 12px; }
@media (max-width: 520px) { .pair { grid-template-columns: 1fr; } }
ul.rows { list-style: none; margin: 0; padding: 0; }
ul.rows li { display: flex; gap: 12px; align-items: center; justify-content: space-between;
  padding: 12px 0; border-top: 1px solid var(--edge); }
ul.rows li:first-child { border-top: 0; padding-top: 0; }
ul.rows li:last-child { padding-bottom: 0; }
ul.rows strong { display: block; font-weight: 600; overflow-wrap: anywhere; }
.meta, .hint { color: var(--ink3); font-size: 12.5px; }
.rule { height: 1px; border: 0; background: var(--edge2); margin: 20px 0; }
code { font: 12.5px "JetBrains Mono", monospace; overflow-wrap: anywhere; }
)css";

constexpr auto kControls = R"css(.field { margin: 0 0 14px; }
label { display: block; font-size: 13px; font-weight: 600; margin-bottom: 5px; }
.check label { display: inline; font-weight: 500; }
input:not([type=checkbox]) { width: 100%; height: 38px; padding: 0 12px; font: inherit;
  color: var(--ink); background: var(--well); border: 1px solid var(--rim); border-radius: 10px; }
textarea { width: 100%; padding: 8px 12px; font: 12.5px/1.5 "JetBrains Mono", monospace;
  color: var(--ink); background: var(--well); border: 1px solid var(--rim); border-radius: 10px;
  resize: vertical; }
input:hover, textarea:hover { border-color: var(--ink3); }
input[aria-invalid=true], textarea[aria-invalid=true] { border-color: var(--bad); }
.hint { margin: 5px 0 0; }
.wrong { margin: 5px 0 0; color: var(--bad); font-size: 12.5px; }
.wrong::before { content: "! "; font-weight: 700; }
button, a.button { display: inline-flex; align-items: center; justify-content: center;
  min-height: 36px; padding: 6px 18px; font: inherit; font-size: 13px; font-weight: 600;
  border: 1px solid var(--edge2); border-radius: 10px; background: var(--soft); color: var(--ink);
  text-decoration: none; cursor: pointer; }
button:hover, a.button:hover { background: var(--softHover); }
button:active, a.button:active { background: var(--softDown); }
.primary, a.button.primary { background: var(--accent); color: #FFFFFF; border-color: transparent; }
.primary:hover, a.button.primary:hover { background: var(--accentHover); }
.primary:active, a.button.primary:active { background: var(--accentDown); }
.danger { color: var(--bad); background: transparent; }
.danger:hover { background: var(--badSoft); }
.wide-button { width: 100%; }
.actions { display: flex; flex-wrap: wrap; gap: 10px; }
a { color: var(--accentInk); }
:focus-visible { outline: 2px solid var(--focus); outline-offset: 2px; }
.notice { padding: 10px 14px; border-radius: 12px; margin-bottom: 16px; }
.notice.good { background: var(--goodSoft); color: var(--good); }
.notice.bad { background: var(--badSoft); color: var(--bad); }
.below { margin: 16px 0 0; font-size: 13px; }
form { margin: 0; }
form + form { margin-top: 10px; }
@media (forced-colors: active) { .primary { border-color: ButtonText; } }
)css";

} // namespace

std::string styleSheet() {
    return std::string(kColours) + kLayout + kControls;
}

std::string markPicture() {
    return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 18 18" stroke-width=".9" stroke-linejoin="round"><path fill="#5B78FB" stroke="#5B78FB" d="M1.2 2.74H4.82L10.92 15.96H7.19Z"/><path fill="#E5631A" stroke="#E5631A" d="M13.18 2.74H16.8L11.83 13.47 10.07 9.46Z"/></svg>)";
}

} // namespace vorq::gateway
