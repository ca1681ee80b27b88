// SPDX-License-Identifier: BSD-3-Clause
// What is measured, by name. report.py reads the names.
#pragma once

namespace bench {

// text/<case>/<bits in a channel>/<renderer>/<unchanged|changing>
void RegisterRenderers();
// frame/<case>/<width>x<height>: the effect, 8 bits, unchanged
void RegisterFrameSizes();
// area/<case>/<font size>: the same, with the counter "pixels": those of the text's rectangle
void RegisterAreas();
// threads/<case>/<unchanged|changing>: the same on one and on two threads, with the counter
// "items_per_second": frames of all threads together
void RegisterThreads();
// cache/<what>/<with|without>
void RegisterCaches();

// Runs the measurement on a core of its own, counted from the last that the process may use.
void PinToCore(int index);

} // namespace bench
