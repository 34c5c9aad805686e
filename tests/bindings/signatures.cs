// SPDX-License-Identifier: MIT
// Prints what the C# declarations pass to the library, for c_signatures.py: each import and callback with the
// types of its result and arguments, and the sizes of the structures.
using System;
using System.Linq;
using System.Reflection;
using System.Runtime.InteropServices;
using Nivral;

internal static class Signatures {
  private static string Name(Type type) {
    if (type.IsByRef || type.IsArray) return Name(type.GetElementType()) + "*";
    if (type == typeof(string)) return "Byte*";
    return type.Name;
  }

  private static string Line(string name, MethodInfo method) {
    var types = method.GetParameters().Select(parameter => parameter.ParameterType);
    return name + " " + string.Join(" ", new[] { method.ReturnType }.Concat(types).Select(Name));
  }

  private static void Main() {
    const BindingFlags imports = BindingFlags.Public | BindingFlags.Static;
    foreach (MethodInfo method in typeof(Native).GetMethods(imports))
      Console.WriteLine(Line(method.Name, method));
    foreach (Type type in typeof(Native).Assembly.GetTypes().Where(t => t.BaseType ==
                                                                        typeof(MulticastDelegate)))
      Console.WriteLine(Line("Nivral" + type.Name, type.GetMethod("Invoke")));
    foreach (Type type in new[] { typeof(NivralRect), typeof(NivralPoint), typeof(WaveFormat) })
      Console.WriteLine(type.Name + " " + Marshal.SizeOf(type));
  }
}
