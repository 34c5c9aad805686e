// SPDX-License-Identifier: MIT
// Handles with what has to outlive them. nivral.h says what each operation does, on which thread.
using System;
using System.Collections.Generic;
using System.Runtime.InteropServices;

namespace Nivral {
  /// <summary>
  /// A handle and the delegates registered on it. While the handle is open the garbage collector takes
  /// neither, even when the program has lost the object: the library would go on calling the delegates.
  /// It is no SafeHandle, and there is no finalizer: those close on the garbage collector's thread at a time
  /// of its own, but a handle is closed on the thread of its window, when no call on it is in flight. Call
  /// Dispose there. Afterwards every operation throws ObjectDisposedException.
  /// </summary>
  public abstract class NativeObject : IDisposable {
    private readonly List<object> delegates = new List<object>();
    private IntPtr handle;
    private GCHandle self;

    public IntPtr Handle {
      get {
        if (handle == IntPtr.Zero) throw new ObjectDisposedException(GetType().Name);
        return handle;
      }
    }

    public bool IsDisposed {
      get { return handle == IntPtr.Zero; }
    }

    public void Dispose() {
      if (handle == IntPtr.Zero) return;
      CloseHandle(handle);
      handle = IntPtr.Zero;
      delegates.Clear();
      self.Free();
    }

    protected void Own(IntPtr opened) {
      handle = opened;
      self = GCHandle.Alloc(this);
    }

    /// <summary>
    /// Keeps a delegate until Dispose, even when another takes its place: the library may be calling it.
    /// </summary>
    protected T Keep<T>(T callback) {
      if (callback != null) delegates.Add(callback);
      return callback;
    }

    internal static void Check(uint result, string call) {
      if (result != 0) throw new InvalidOperationException(call + " returned 0x" + result.ToString("X"));
    }

    protected abstract void CloseHandle(IntPtr opened);
  }

  public enum Start : uint { Direct3D9OrDirectDraw = 0, Sdl2 = 1 }
  public enum Backend : uint { Sdl2 = 0, Direct3D9 = 1, DirectDraw = 2 }
  public enum Mirror : uint { None = 0, Flip = 1, HalfTurn = 2 }
  public enum Anchor : uint { Top = 0, Bottom = 1 }
  public enum ObjectClass : ushort {
    Unknown = 0,
    Person = 1,
    Car = 2,
    Bus = 3,
    Truck = 4,
    Minibus = 5,
    Vehicle = 6,
    NonVehicle = 7
  }

  /// <summary>Start-up and shut-down: made before the first pane, disposed after the last.</summary>
  public sealed class NivralLibrary : IDisposable {
    public NivralLibrary(Start start) { Native.NIVRAL_InitializeEx((uint)start); }
    public void Dispose() { Native.NIVRAL_UnInitialize(); }
  }

  /// <summary>0 is neutral.</summary>
  public struct ColorParams {
    public int Brightness, Contrast, Saturation, Hue;
  }

  /// <summary>In video pixels.</summary>
  public struct LabelledBox {
    public float Left, Top, Right, Bottom;
    public ObjectClass Class;
    public ushort Distance;
  }

  /// <summary>In video pixels.</summary>
  public struct Landmark {
    public float X, Y;
  }

  /// <summary>In video pixels.</summary>
  public struct FaceBox {
    public float Left, Top, Right, Bottom;
  }

  public struct ColorRange {
    public ColorParams Lowest, Highest;
  }

  /// <summary>A video pane. Callbacks must not throw: there is no managed caller.</summary>
  public sealed class Display : NativeObject {
    private IntPtr window;
    private FrameCallback onFrame;
    private DecodeCallback onDecode;
    private DisplayCallback onDisplay;
    private FlashWndCallback onExposed;
    private Mirror mirror;
    private bool paused, mosaicShown;
    private uint mosaicLevel;
    private int index;

    /// <summary>On the backend that start-up chose.</summary>
    public Display() {
      IntPtr handle;
      Check(Native.NIVRAL_DWOpenDraw(out handle), "NIVRAL_DWOpenDraw");
      Own(handle);
    }

    public Display(Backend backend) {
      IntPtr handle;
      Check(Native.NIVRAL_DWOpenDrawEx(out handle, (uint)backend), "NIVRAL_DWOpenDrawEx");
      Own(handle);
    }

    /// <summary>Set it before Init.</summary>
    public IntPtr Window {
      get { return window; }
      set { Native.NIVRAL_DWSetHwnd(Handle, window = value); }
    }

    public int Width { get; private set; }
    public int Height { get; private set; }

    public void Init(int width, int height) {
      if (width < 1) throw new ArgumentOutOfRangeException("width");
      if (height < 1) throw new ArgumentOutOfRangeException("height");
      Width = width;
      Height = height;
      Native.NIVRAL_DWInitDraw(Handle, (uint)width, (uint)height, 0);
    }

    /// <summary>Gives the window back and keeps settings and callbacks.</summary>
    public void Free() { Native.NIVRAL_DWFreeDraw(Handle); }

    /// <summary>The backend's code: 0 when the frame was taken.</summary>
    public uint Draw(IntPtr y, int strideY, IntPtr u, IntPtr v, int strideUV, uint param1 = 0,
                     long param2 = 0) {
      return Native.NIVRAL_DWDrawYUV420(Handle, y, (uint)strideY, u, v, (uint)strideUV, param1, param2);
    }

    public uint Draw(byte[] y, int strideY, byte[] u, byte[] v, int strideUV, uint param1 = 0,
                     long param2 = 0) {
      CheckFrame(y.Length, strideY, u.Length, v.Length, strideUV);
      return Native.NIVRAL_DWDrawYUV420(Handle, ref y[0], (uint)strideY, ref u[0], ref v[0], (uint)strideUV,
                                        param1, param2);
    }

#if NETCOREAPP
    public uint Draw(ReadOnlySpan<byte> y, int strideY, ReadOnlySpan<byte> u, ReadOnlySpan<byte> v,
                     int strideUV, uint param1 = 0, long param2 = 0) {
      CheckFrame(y.Length, strideY, u.Length, v.Length, strideUV);
      return Native.NIVRAL_DWDrawYUV420(Handle, ref MemoryMarshal.GetReference(y), (uint)strideY,
                                        ref MemoryMarshal.GetReference(u), ref MemoryMarshal.GetReference(v),
                                        (uint)strideUV, param1, param2);
    }
#endif

    public void WindowResized() {
      Native.NIVRAL_DWAdjustedWnd(Handle);
    }

    public void SetPlayRect(NivralRect rect) {
      Native.NIVRAL_DWSetPlayRect(Handle, ref rect);
    }

    public void SetZoom(int x, int y, int factor) {
      Native.NIVRAL_DWSetZoom(Handle, (uint)x, (uint)y, (uint)factor);
    }

    public Mirror Mirror {
      get { return mirror; }
      set { Native.NIVRAL_DWSetMirrorMode(Handle, (uint)(mirror = value)); }
    }

    public bool Paused {
      get { return paused; }
      set { Native.NIVRAL_DWSetPause(Handle, (paused = value)? 1u: 0u); }
    }

    /// <summary>Comes back in OnDisplay.</summary>
    public int Index {
      get { return index; }
      set { Native.NIVRAL_DWSetIndex(Handle, index = value); }
    }

    /// <summary>What acts on the picture.</summary>
    public ColorParams Color {
      get {
        var color = new ColorParams();
        Native.NIVRAL_GetColorParams(Handle, out color.Brightness, out color.Contrast, out color.Saturation,
                                     out color.Hue);
        return color;
      }
      set {
        Native.NIVRAL_SetColorParams(Handle, value.Brightness, value.Contrast, value.Saturation, value.Hue,
                                     0);
      }
    }

    public static ColorRange ColorLimits {
      get {
        var range = new ColorRange();
        Native.NIVRAL_GetColorParamsRange(out range.Lowest.Brightness, out range.Highest.Brightness,
                                          out range.Lowest.Contrast, out range.Highest.Contrast,
                                          out range.Lowest.Saturation, out range.Highest.Saturation,
                                          out range.Lowest.Hue, out range.Highest.Hue);
        return range;
      }
    }

    /// <summary>line is 0 to 5, colour 0x00BBGGRR; an empty text removes the line.</summary>
    public void SetText(int line, string text, int x, int y, int colour, Anchor anchor = Anchor.Top) {
      Native.NIVRAL_DWSetOSDText(Handle, line, text, (uint)x, (uint)y, (uint)anchor, (uint)colour);
    }

    public bool MosaicShown {
      get { return mosaicShown; }
      set { Native.NIVRAL_DWSetMosaicFlag(Handle, (mosaicShown = value)? 1u: 0u); }
    }

    public int MosaicLevel {
      get { return (int)mosaicLevel; }
      set { Native.NIVRAL_DWSetMosaicLevel(Handle, mosaicLevel = (uint)value); }
    }

    /// <summary>Fractions of the client area, in the order of C.</summary>
    public void SetMosaicArea(float top, float left, float bottom, float right) {
      Native.NIVRAL_DWSetMosaicAreaScale(Handle, top, left, bottom, right);
    }

    /// <summary>Client pixels. Not on Direct3D 9.</summary>
    public void SetMosaicRect(NivralRect rect) {
      Native.NIVRAL_DWSetMosaics(Handle, ref rect);
    }

    /// <summary>Driver assistance: 1 to 12 boxes, once per frame; other counts are ignored.</summary>
    public void SetAssistance(LabelledBox[] boxes, int lineWidth) {
      Native.NIVRAL_DWSetAlgInfo(
          Handle, boxes.Length, Array.ConvertAll(boxes, box => box.Left),
          Array.ConvertAll(boxes, box => box.Top), Array.ConvertAll(boxes, box => box.Right),
          Array.ConvertAll(boxes, box => box.Bottom), Array.ConvertAll(boxes, box => (ushort)box.Class),
          Array.ConvertAll(boxes, box => box.Distance), new ushort[boxes.Length], new ushort[boxes.Length],
          (ushort)lineWidth);
    }

    /// <summary>The record of a frame in which nothing was found.</summary>
    public void ClearAssistance() {
      SetAssistance(new[] { new LabelledBox { Top = 65535, Bottom = -1 } }, 0);
    }

    /// <summary>
    /// Driver monitoring: up to 68 landmarks and 12 face boxes, once per frame; other counts are ignored, two
    /// empty arrays are the record of a frame in which nothing was found.
    /// </summary>
    public void SetMonitoring(Landmark[] landmarks, FaceBox[] faces, int radius) {
      Native.NIVRAL_DWSetDsmAlgInfo(Handle, landmarks.Length, Array.ConvertAll(landmarks, point => point.X),
                                    Array.ConvertAll(landmarks, point => point.Y), faces.Length,
                                    Array.ConvertAll(faces, face => face.Left),
                                    Array.ConvertAll(faces, face => face.Top),
                                    Array.ConvertAll(faces, face => face.Right),
                                    Array.ConvertAll(faces, face => face.Bottom), (ushort)radius);
    }

    public FrameCallback OnFrame {
      get { return onFrame; }
      set {
        Check(Native.NIVRAL_DWSetDrawYUV420CB(Handle, IntPtr.Zero, onFrame = Keep(value)),
              "NIVRAL_DWSetDrawYUV420CB");
      }
    }

    public DecodeCallback OnDecode {
      get { return onDecode; }
      set {
        Check(Native.NIVRAL_DWSetDecCB(Handle, IntPtr.Zero, onDecode = Keep(value)), "NIVRAL_DWSetDecCB");
      }
    }

    public DisplayCallback OnDisplay {
      get { return onDisplay; }
      set {
        Check(Native.NIVRAL_DWSetDisplayCB(Handle, IntPtr.Zero, onDisplay = Keep(value)),
              "NIVRAL_DWSetDisplayCB");
      }
    }

    public FlashWndCallback OnExposed {
      get { return onExposed; }
      set {
        Check(Native.NIVRAL_DWSetFlashWndCB(Handle, IntPtr.Zero, onExposed = Keep(value)),
              "NIVRAL_DWSetFlashWndCB");
      }
    }

    protected override void CloseHandle(IntPtr opened) {
      Native.NIVRAL_DWCloseDraw(opened);
    }

    private void CheckFrame(int y, int strideY, int u, int v, int strideUV) {
      if (Height == 0) throw new InvalidOperationException("Init comes before Draw");
      CheckPlanes(y, strideY, u, v, strideUV, Width, Height);
    }

    internal static void CheckPlanes(int y, int strideY, int u, int v, int strideUV, int width, int height) {
      CheckPlane("y", y, strideY, width, height);
      CheckPlane("u", u, strideUV, width / 2, height / 2);
      CheckPlane("v", v, strideUV, width / 2, height / 2);
    }

    private static void CheckPlane(string plane, int bytes, int stride, int width, int height) {
      if (width == 0 || height == 0) return;
      if (stride < width || bytes < (long)stride * height)
        throw new ArgumentException("the plane is smaller than the video", plane);
    }
  }

  /// <summary>A player of PCM sound. Its callback, on a thread of the library, must not throw.</summary>
  public sealed class WavePlayer : NativeObject {
    private const int NotSet = -1;
    private WriteWaveCallback onWrite;
    private bool paused;
    private volatile int volume = NotSet;
    private volatile bool isVolumeDue;

    public WavePlayer() {
      IntPtr handle;
      Check(Native.NIVRAL_WVOpenWave(out handle), "NIVRAL_WVOpenWave");
      Own(handle);
    }

    public WriteWaveCallback OnWrite {
      get { return onWrite; }
      set {
        WriteWaveCallback withVolume = (buffer, size, user) => {
          ApplyVolume();
          return value(buffer, size, user);
        };
        Check(Native.NIVRAL_WVSetWriteWaveCB(Handle, IntPtr.Zero, value == null ? null : Keep(withVolume)),
              "NIVRAL_WVSetWriteWaveCB");
        onWrite = value;
      }
    }

    public void SetFormat(WaveFormat format, int bufferSize) {
      Native.NIVRAL_WVSetWaveFormat(Handle, ref format, (uint)bufferSize);
    }

    public void Play() {
      isVolumeDue = true;
      Native.NIVRAL_WVPlayWave(Handle);
    }

    public void Stop() { Native.NIVRAL_WVStopWave(Handle); }

    public bool Paused {
      get { return paused; }
      set { Native.NIVRAL_WVPauseWave(Handle, (paused = value)? 1u: 0u); }
    }

    /// <summary>
    /// Percent; -1 until it is set, which leaves the device's own. Set again at the first call of OnWrite
    /// after each Play, the earliest place.
    /// </summary>
    public int Volume {
      get { return volume; }
      set {
        if (value < 0 || value > 100) throw new ArgumentOutOfRangeException("value");
        volume = value;
        isVolumeDue = true;
        Native.NIVRAL_WVSetVolume(Handle, (ushort)value);
      }
    }

    private void ApplyVolume() {
      if (!isVolumeDue || volume == NotSet) return;
      isVolumeDue = false;
      Native.NIVRAL_WVSetVolume(Handle, (ushort)volume);
    }

    protected override void CloseHandle(IntPtr opened) { Native.NIVRAL_WVCloseWave(opened); }
  }
}
