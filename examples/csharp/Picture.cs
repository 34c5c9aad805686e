// SPDX-License-Identifier: MIT
// Pictures of frames, for snapshots.
using System;
using System.IO;
using System.Runtime.InteropServices;

namespace Nivral {
  /// <summary>
  /// Pictures of 3 bytes a pixel (B, G, R) and 3 * width bytes a row, the top row first, of planes as they
  /// are, without texts, boxes and mosaic. An odd last column or row stays black.
  /// </summary>
  public static class Picture {
    public static byte[] ToBgr24(byte[] y, int strideY, byte[] u, byte[] v, int strideUV, int width,
                                 int height) {
      Display.CheckPlanes(y.Length, strideY, u.Length, v.Length, strideUV, width, height);
      var bgr = new byte[3 * width * height];
      Native.NIVRAL_yv12_to_rgb24_c(bgr, (uint)width, y, u, v, (uint)strideY, (uint)strideUV, (uint)width,
                                    (uint)height);
      return bgr;
    }

    /// <summary>From planes in native memory. Strides as Draw takes them or as OnFrame gets them.</summary>
    public static byte[] ToBgr24(IntPtr y, long strideY, IntPtr u, IntPtr v, long strideUV, int width,
                                 int height) {
      var bgr = new byte[3 * width * height];
      GCHandle pinned = GCHandle.Alloc(bgr, GCHandleType.Pinned);
      Native.NIVRAL_yv12_to_rgb24_c(pinned.AddrOfPinnedObject(), (uint)width, y, u, v, (uint)strideY,
                                    (uint)strideUV, (uint)width, (uint)height);
      pinned.Free();
      return bgr;
    }

    /// <summary>Writes what ToBgr24 made; throws what File.Create and writing throw.</summary>
    public static void SaveBmp(string path, byte[] bgr, int width, int height) {
      const int headers = 54;
      var padding = new byte[(4 - 3 * width % 4) % 4];
      int pixels = (3 * width + padding.Length) * height;
      using (var file = new BinaryWriter(File.Create(path))) {
        file.Write((ushort)0x4D42);
        foreach (int field in new[] { headers + pixels, 0, headers, 40, width, height })
          file.Write(field);
        file.Write((ushort)1);
        file.Write((ushort)24);
        foreach (int field in new[] { 0, pixels, 0, 0, 0, 0 })
          file.Write(field);
        for (int row = height - 1; row >= 0; --row) {
          file.Write(bgr, 3 * width * row, 3 * width);
          file.Write(padding);
        }
      }
    }
  }
}
