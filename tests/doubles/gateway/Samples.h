#pragma once

namespace vorq::gateway::testing {

constexpr auto kPlantText = R"(# Photosynthesis

Photosynthesis is a process by which plants, algae and some bacteria turn light energy into
chemical energy. The energy is stored in sugars, which are made from carbon dioxide and water.
Dr. Jan Ingenhousz showed in 1779 that light is essential to the process. Oxygen is released as a
by-product, e.g. through the stomata of the leaves.

## Where it happens

- Chlorophyll, the green pigment in chloroplasts, absorbs mostly blue and red light.
- The light reactions take place in the thylakoid membranes.
- The Calvin cycle takes place in the stroma because it needs the enzymes there.

```
int code = 1; // No sentence. At all.
```

Rubisco is the most abundant enzyme on Earth. Without photosynthesis, the atmosphere would hold
little oxygen. Plants in deserts open their stomata at night and store carbon dioxide until morning.
)";

} // namespace vorq::gateway::testing
