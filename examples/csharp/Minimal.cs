// SPDX-License-Identifier: MIT
// The smallest client in C#: a form with a moving grey ramp, a line of text and a tone.
// Build with: dotnet build, or csc /platform:x64 /r:System.Windows.Forms.dll /r:System.Drawing.dll *.cs
// The program needs libnivral.dll, SDL2.dll and SDL2_ttf.dll beside it.
using System;
using System.Drawing;
using System.Runtime.InteropServices;
using System.Windows.Forms;
using Nivral;

internal sealed class MinimalForm : Form {
  private const int VideoWidth = 640;
  private const int VideoHeight = 360;
  private const uint SamplesPerSecond = 8000;

  private readonly byte[] y = new byte[VideoWidth * VideoHeight];
  private readonly byte[] u = new byte[VideoWidth * VideoHeight / 4];
  private readonly byte[] v = new byte[VideoWidth * VideoHeight / 4];
  private readonly Timer timer = new Timer { Interval = 40 };
  private Display display;
  private WavePlayer player;
  private int frame;
  private int sample;

  private MinimalForm() {
    Text = "libnivral";
    ClientSize = new Size(VideoWidth, VideoHeight);
    // The pane paints the whole client area.
    SetStyle(ControlStyles.Opaque, true);
    for (int i = 0; i < u.Length; ++i)
      u[i] = v[i] = 128;
    timer.Tick += (sender, e) => DrawNextFrame();
  }

  protected override void OnShown(EventArgs e) {
    base.OnShown(e);
    display = new Display { Window = Handle };
    display.Init(VideoWidth, VideoHeight);
    display.SetText(0, "Camera 1", 16, 12, 0x0000FFFF);
    player = new WavePlayer { OnWrite = WriteTone };
    player.SetFormat(WaveFormat.Pcm(1, SamplesPerSecond, 16), 1280);
    player.Play();
    timer.Start();
  }

  protected override void OnResize(EventArgs e) {
    base.OnResize(e);
    if (display != null) display.WindowResized();
  }

  /// <summary>Not to be cancelled any more, and the window is still there.</summary>
  protected override void OnFormClosed(FormClosedEventArgs e) {
    timer.Stop();
    if (player != null) player.Dispose();
    if (display != null) display.Dispose();
    display = null;
    base.OnFormClosed(e);
  }

  private void DrawNextFrame() {
    for (int row = 0; row < VideoHeight; ++row)
      for (int column = 0; column < VideoWidth; ++column)
        y[row * VideoWidth + column] = (byte)(16 + (column + 4 * frame) % 220);
    display.Draw(y, VideoWidth, u, v, VideoWidth / 2, (uint)frame);
    ++frame;
  }

  /// <summary>On the player's thread.</summary>
  private int WriteTone(IntPtr buffer, int size, IntPtr user) {
    for (int offset = 0; offset + 1 < size; offset += 2, ++sample)
      Marshal.WriteInt16(buffer, offset,
                         (short)(3000 * Math.Sin(2 * Math.PI * 440 * sample / SamplesPerSecond)));
    return size;
  }

  [STAThread]
  private static void Main() {
    using (new NivralLibrary(Start.Sdl2)) using (var form = new MinimalForm()) Application.Run(form);
  }
}
