#pragma once

#include <QString>

namespace vorq::samples {

/// A reply with every kind of block.
inline const QString leaves = QStringLiteral(R"(# Why leaves look green

Chlorophyll absorbs **red** and **blue** light strongly and reflects much of the green in between. What reaches your eye is the part the leaf *did not* keep.

## What the passage argues

- The green gap is a trade-off: it keeps the antenna **stable** when light flickers.
- Absorbing everything would overload the reaction centre at noon.

## How to check it yourself

1. Crush two spinach leaves in `10 ml` of alcohol.
2. Dip a coffee filter and wait for the bands to separate.

> Plants trade peak efficiency for steady output in noisy light.

```
absorb = λ => chlA(λ) + 0.35 * chlB(λ)
gap    = range(500, 570).filter(λ => absorb(λ) < 0.2)
```

| Pigment | Peak | You see |
|---|---|---|
| Chlorophyll a | 430, 662 nm | Blue-green |
| Chlorophyll b | 453, 642 nm | Yellow-green |
| Carotenoid | 450 nm | Orange |

---

Source: [Plant Light Harvesting](https://example.org), 2020.)");

/// A reply in two directions of writing.
inline const QString mixed = QStringLiteral(R"(## الفرق بين النوعين

النوع الأول `int` أصغر من **النوع الثاني** ويستخدم ذاكرة أقل.

- العنصر الأول في القائمة مع كلمة English في الوسط.
- A left-to-right item between the others.

> اقتباس قصير.

```
let x = 1; // שלום
```

That is all.)");

/// A reply from right to left with what in it is not.
inline const QString arabic = QStringLiteral(R"(# كيف تعمل الدالة

استخدم `f(x)` هنا و `items[0]` هناك، ثم شاهد النتيجة في السطر التالي من هذا النص.

1. العنصر الأول
2. العنصر الثاني
3. العنصر الثالث

| المدينة | السكان |
|---|---|
| تونس | 42 |
| Paris | 7 |)");

/// Code with lines that are wider than the panel, between full lines.
inline const QString wideCode = QStringLiteral(
    R"(A full line of words stands above the code, as wide as the bubble allows it to be, and a second one.

```
auto total = std::accumulate(values.begin(), values.end(), 0.0, [](double a, double b) { return a + b; });
return total;
```

And another paragraph that fills its first line all the way to the right edge of the bubble.)");

} // namespace vorq::samples
