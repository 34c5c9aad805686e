// SPDX-License-Identifier: MIT
// Handles with what has to outlive them. The other functions of Native take their Handle.
using System;
using System.Collections.Generic;
using System.Runtime.InteropServices;

namespace Nivral {
  /// <summary>
  /// A handle and the delegates registered on it. While the handle is open the garbage collector takes
  /// neither, even when the program has lost the object: the library would go on calling the delegates. There
  /// is no finalizer, because closing belongs on one thread of the program; call Dispose there.
  /// </summary>
  public abstract class NativeObject : IDisposable {
    private readonly List<object> delegates = new List<object>();
    private GCHandle self;

    public IntPtr Handle { get; private set; }

    public void Dispose() {
      if (Handle == IntPtr.Zero) return;
      CloseHandle(Handle);
      Handle = IntPtr.Zero;
      delegates.Clear();
      self.Free();
    }

    protected void Own(IntPtr handle) {
      Handle = handle;
      self = GCHandle.Alloc(this);
    }

    /// <summary>
    /// Keeps a delegate until Dispose, even when another takes its place: the library may be calling it.
    /// </summary>
    protected T Keep<T>(T callback) {
      if (callback != null) delegates.Add(callback);
      return callback;
    }

    protected static void Check(uint result, string call) {
      if (result != 0) throw new InvalidOperationException(call + " returned " + result);
    }

    protected abstract void CloseHandle(IntPtr handle);
  }

  public enum Backend : uint { Sdl2 = 0, Direct3D9 = 1, DirectDraw = 2 }

  /// <summary>A video pane. Callbacks must not throw: there is no managed caller.</summary>
  public sealed class Display : NativeObject {
    /// <summary>On the backend that NIVRAL_InitializeEx chose.</summary>
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

    public FrameCallback OnFrame {
      set {
        Check(Native.NIVRAL_DWSetDrawYUV420CB(Handle, IntPtr.Zero, Keep(value)), "NIVRAL_DWSetDrawYUV420CB");
      }
    }

    public DecodeCallback OnDecode {
      set { Check(Native.NIVRAL_DWSetDecCB(Handle, IntPtr.Zero, Keep(value)), "NIVRAL_DWSetDecCB"); }
    }

    public DisplayCallback OnDisplay {
      set { Check(Native.NIVRAL_DWSetDisplayCB(Handle, IntPtr.Zero, Keep(value)), "NIVRAL_DWSetDisplayCB"); }
    }

    public FlashWndCallback OnExposed {
      set {
        Check(Native.NIVRAL_DWSetFlashWndCB(Handle, IntPtr.Zero, Keep(value)), "NIVRAL_DWSetFlashWndCB");
      }
    }

    protected override void CloseHandle(IntPtr handle) { Native.NIVRAL_DWCloseDraw(handle); }
  }

  /// <summary>A player of PCM sound. Its callback, on a thread of the library, must not throw.</summary>
  public sealed class WavePlayer : NativeObject {
    public WavePlayer() {
      IntPtr handle;
      Check(Native.NIVRAL_WVOpenWave(out handle), "NIVRAL_WVOpenWave");
      Own(handle);
    }

    public WriteWaveCallback OnWrite {
      set {
        Check(Native.NIVRAL_WVSetWriteWaveCB(Handle, IntPtr.Zero, Keep(value)), "NIVRAL_WVSetWriteWaveCB");
      }
    }

    protected override void CloseHandle(IntPtr handle) { Native.NIVRAL_WVCloseWave(handle); }
  }
}
