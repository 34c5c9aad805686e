// SPDX-License-Identifier: MIT
// What PaneHost.cs uses of WPF, which no compiler here has, as its documentation declares it.
using System.Runtime.InteropServices;

namespace System.Windows {
  public struct Rect {}
}

namespace System.Windows.Interop {
  public abstract class HwndHost {
    public IntPtr Handle { get; private set; }
    protected abstract HandleRef BuildWindowCore(HandleRef hwndParent);
    protected abstract void DestroyWindowCore(HandleRef hwnd);
    protected virtual void OnWindowPositionChanged(Rect rcBoundingBox) {}
  }
}
