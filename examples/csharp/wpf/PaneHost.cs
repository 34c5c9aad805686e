// SPDX-License-Identifier: MIT
// A video pane as an element of WPF: <local:PaneHost/> in XAML, then Open and Draw.
using System;
using System.Runtime.InteropServices;
using System.Windows;
using System.Windows.Interop;

namespace Nivral.Wpf {
  /// <summary>
  /// WPF draws its elements itself and has one window for all of them; a pane needs a window of its own,
  /// which HwndHost makes. It covers whatever WPF draws at its place (the "airspace" rule), so controls that
  /// should lie over the video go into a Popup.
  /// </summary>
  public sealed class PaneHost : HwndHost {
    private const int WsChild = 0x40000000;
    private const int WsVisible = 0x10000000;
    private const int WsClipSiblings = 0x04000000;

    public Display Display { get; private set; }

    /// <summary>Once the element is loaded, on the thread of the window.</summary>
    public void Open(Backend backend, int width, int height) {
      Display = new Display(backend) { Window = Handle };
      Display.Init(width, height);
    }

    protected override HandleRef BuildWindowCore(HandleRef parent) {
      IntPtr window = CreateWindowEx(0, "STATIC", "", WsChild | WsVisible | WsClipSiblings, 0, 0, 1, 1,
                                     parent.Handle, IntPtr.Zero, IntPtr.Zero, IntPtr.Zero);
      if (window == IntPtr.Zero) throw new InvalidOperationException("no window for the pane");
      return new HandleRef(this, window);
    }

    /// <summary>WPF has moved or resized the window.</summary>
    protected override void OnWindowPositionChanged(Rect place) {
      base.OnWindowPositionChanged(place);
      if (Display != null) Display.WindowResized();
    }

    /// <summary>The thread that feeds the pane has ended by now.</summary>
    protected override void DestroyWindowCore(HandleRef window) {
      if (Display != null) Display.Dispose();
      Display = null;
      DestroyWindow(window.Handle);
    }

    [DllImport("user32.dll", CharSet = CharSet.Unicode, SetLastError = true)]
    private static extern IntPtr CreateWindowEx(int exStyle, string name, string title, int style, int x,
                                                int y, int width, int height, IntPtr parent, IntPtr menu,
                                                IntPtr instance, IntPtr param);

    [DllImport("user32.dll", SetLastError = true)]
    private static extern bool DestroyWindow(IntPtr window);
  }
}
