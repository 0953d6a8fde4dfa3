#include "backend/account/SignedInPage.h"

namespace vorq {

const QByteArrayView signedInPage = R"html(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light">
<meta name="referrer" content="no-referrer">
<title>Signed in</title>
<style>
* {
  box-sizing: border-box;
}
html,
body {
  height: 100%;
  margin: 0;
}
body {
  display: flex;
  align-items: center;
  justify-content: center;
  padding: 24px;
  background: #f6f7f8;
  color: #0f1115;
  font-family: system-ui, -apple-system, "Segoe UI", "Noto Sans", Ubuntu, Cantarell, Roboto, Helvetica, Arial, sans-serif;
}
main {
  width: 100%;
  max-width: 360px;
  padding: 40px 32px;
  border-radius: 16px;
  background: #fff;
  text-align: center;
}
.mark {
  display: flex;
  align-items: center;
  justify-content: center;
  width: 72px;
  height: 72px;
  margin: 0 auto 24px;
  border: 2px solid #9ca3af;
  border-radius: 50%;
}
.mark svg {
  width: 32px;
  height: 32px;
  fill: none;
  stroke: currentColor;
  stroke-width: 2;
  stroke-linecap: round;
  stroke-linejoin: round;
}
h1 {
  margin: 0;
  font-size: 20px;
  font-weight: 600;
  line-height: 1.3;
  letter-spacing: -0.01em;
}
@media (forced-colors: active) {
  .mark {
    border-color: CanvasText;
  }
}
</style>
</head>
<body>
<main>
<div class="mark">
<svg viewBox="0 0 24 24" aria-hidden="true" focusable="false">
<path d="M5 12.5l4.5 4.5L19 7.5"></path>
</svg>
</div>
<h1>Complete</h1>
</main>
</body>
</html>
)html";

} // namespace vorq
