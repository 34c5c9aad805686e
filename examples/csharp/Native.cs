// SPDX-License-Identifier: MIT
// nivral.h in C#, declaration by declaration. Names and results are the header's, which is the reference.
using System;
using System.Runtime.InteropServices;

namespace Nivral {
  /// <summary>RECT. System.Drawing and WPF have types of other layouts with the shorter name.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct NivralRect {
    public int Left, Top, Right, Bottom;
  }

  /// <summary>POINT.</summary>
  [StructLayout(LayoutKind.Sequential)]
  public struct NivralPoint {
    public int X, Y;
  }

  /// <summary>WAVEFORMATEX: 18 bytes, not padded to 20.</summary>
  [StructLayout(LayoutKind.Sequential, Pack = 1)]
  public struct WaveFormat {
    public ushort FormatTag;
    public ushort Channels;
    public uint SamplesPerSecond;
    public uint AverageBytesPerSecond;
    public ushort BlockAlign;
    public ushort BitsPerSample;
    public ushort ExtraSize;

    public static WaveFormat Pcm(ushort channels, uint samplesPerSecond, ushort bitsPerSample) {
      var blockAlign = (ushort)(channels * bitsPerSample / 8);
      return new WaveFormat { FormatTag = 1,
                              Channels = channels,
                              SamplesPerSecond = samplesPerSecond,
                              AverageBytesPerSecond = samplesPerSecond * blockAlign,
                              BlockAlign = blockAlign,
                              BitsPerSample = bitsPerSample };
    }
  }

  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void FrameCallback(IntPtr y, uint strideY, IntPtr u, IntPtr v, uint strideUV, uint param1,
                                     long param2, IntPtr user);

  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void DecodeCallback(IntPtr y, uint strideY, uint width, uint height, long param2,
                                      uint format, IntPtr user);

  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void DisplayCallback(int index, IntPtr hdc, uint width, uint height, long param2,
                                       int clientWidth, int clientHeight, uint mirrorMode, IntPtr user);

  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate void FlashWndCallback(IntPtr user, IntPtr playWnd, int clientWidth, int clientHeight);

  [UnmanagedFunctionPointer(CallingConvention.Cdecl)]
  public delegate int WriteWaveCallback(IntPtr buffer, int size, IntPtr user);

  /// <summary>
  /// The exports. The library keeps a callback but does not keep its delegate alive: whoever calls a Set...CB
  /// function holds the delegate until the handle is closed, as Display and WavePlayer do. Words that carry
  /// float bits in C are float here; the memory is the same.
  /// </summary>
  public static class Native {
    private const string Library = "libnivral.dll";
    private const CallingConvention C = CallingConvention.Cdecl;

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_Initialize();

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_InitializeEx(uint useSdl);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_UnInitialize();

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWOpenDraw(out IntPtr display);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWOpenDrawEx(out IntPtr display, uint type);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWCloseDraw(IntPtr display);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWFreeDraw(IntPtr display);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetHwnd(IntPtr display, IntPtr window);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetHwndEx(IntPtr display, IntPtr window, long param, uint flag);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWInitDraw(IntPtr display, uint width, uint height, uint param);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWDrawYUV420(IntPtr display, IntPtr y, uint strideY, IntPtr u, IntPtr v,
                                                  uint strideUV, uint param1, long param2);

    /// <summary>From the first byte of each plane: arrays and spans stay in place during it.</summary>
    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWDrawYUV420(IntPtr display, ref byte y, uint strideY, ref byte u,
                                                  ref byte v, uint strideUV, uint param1, long param2);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWAdjustedWnd(IntPtr display);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetPlayRect(IntPtr display, ref NivralRect rect);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetZoom(IntPtr display, uint x, uint y, uint factor);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetMirrorMode(IntPtr display, uint mode);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetIndex(IntPtr display, int index);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetPause(IntPtr display, uint paused);

    [DllImport(Library, CallingConvention = C, CharSet = CharSet.Ansi)]
    public static extern uint NIVRAL_DWSetOSDText(IntPtr display, int index, string text, uint x, uint y,
                                                  uint anchor, uint colour);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetMosaics(IntPtr display, ref NivralRect rect);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetMosaicFlag(IntPtr display, uint flag);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetMosaicLevel(IntPtr display, uint level);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetMosaicAreaScale(IntPtr display, float top, float left, float bottom,
                                                          float right);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWUpdateMosaics(IntPtr display, uint commit);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetRClickPt(IntPtr display, NivralPoint point);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetAlgInfo(IntPtr display, int count, float[] left, float[] top,
                                                  float[] right, float[] bottom, ushort[] classId,
                                                  ushort[] distance, ushort[] third, ushort[] fourth,
                                                  ushort value);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetDsmAlgInfo(IntPtr display, int pointCount, float[] x, float[] y,
                                                     int boxCount, float[] left, float[] top, float[] right,
                                                     float[] bottom, ushort value);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetDecCB(IntPtr display, IntPtr user, DecodeCallback callback);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetDisplayCB(IntPtr display, IntPtr user, DisplayCallback callback);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetDrawYUV420CB(IntPtr display, IntPtr user, FrameCallback callback);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_DWSetFlashWndCB(IntPtr display, IntPtr user, FlashWndCallback callback);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_SetColorParams(IntPtr display, int brightness, int contrast,
                                                    int saturation, int hue, int index);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_GetColorParams(IntPtr display, out int brightness, out int contrast,
                                                    out int saturation, out int hue);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_GetColorParamsEx(IntPtr display, out int brightness, out int contrast,
                                                      out int saturation, out int hue, int index);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_GetColorParamsRange(out int brightnessMin, out int brightnessMax,
                                                         out int contrastMin, out int contrastMax,
                                                         out int saturationMin, out int saturationMax,
                                                         out int hueMin, out int hueMax);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_WVOpenWave(out IntPtr player);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_WVCloseWave(IntPtr player);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_WVSetWaveFormat(IntPtr player, ref WaveFormat format, uint bufferSize);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_WVSetWriteWaveCB(IntPtr player, IntPtr user, WriteWaveCallback callback);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_WVPlayWave(IntPtr player);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_WVPauseWave(IntPtr player, uint paused);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_WVStopWave(IntPtr player);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_WVSetVolume(IntPtr player, ushort volume);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_rgb24_to_yv12_c(IntPtr y, IntPtr u, IntPtr v, IntPtr rgb, uint width,
                                                     uint height, uint strideY);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_rgb24_to_yv12_c(byte[] y, byte[] u, byte[] v, byte[] rgb, uint width,
                                                     uint height, uint strideY);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_yv12_to_rgb24_c(IntPtr rgb, uint rgbStride, IntPtr y, IntPtr u, IntPtr v,
                                                     uint strideY, uint strideUV, uint width, uint height);

    [DllImport(Library, CallingConvention = C)]
    public static extern uint NIVRAL_yv12_to_rgb24_c(byte[] rgb, uint rgbStride, byte[] y, byte[] u, byte[] v,
                                                     uint strideY, uint strideUV, uint width, uint height);
  }
}
