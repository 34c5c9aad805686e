// SPDX-License-Identifier: MIT
// Where panes lie in the player's window.
#pragma once

struct PixelSize {
  int width;
  int height;
};

struct PixelArea {
  int left;
  int top;
  int width;
  int height;
};

/// The cell with number `index`, row by row, of the squarest grid with at least `count` cells. Cells are a
/// few pixels apart.
PixelArea CellOf(int index, int count, PixelSize window);

/// What is left of a window beside a panel at its right and over a bar at its bottom.
PixelArea RoomForPanes(PixelSize window, int panelWidth, int barHeight);

/// The largest area with the picture's proportions inside `cell`, in its middle.
PixelArea FitInto(const PixelArea& cell, PixelSize picture);

/// How large a window shows `count` pictures well: one in its own size, several in one of usual width.
PixelSize WindowSizeFor(int count, PixelSize picture);
