using System;
using System.Runtime.InteropServices;
using Orv.Native;

namespace Orv
{
    /// <summary>A handle of an action, which it closes. A function that gets it keeps it alive during the call.</summary>
    public sealed class OrvHandle : SafeHandle
    {
        /// <summary>For functions that take a null handle.</summary>
        public static readonly OrvHandle Null = new OrvHandle();

        public OrvHandle() : base(IntPtr.Zero, true) { }

        public override bool IsInvalid
        {
            get { return handle == IntPtr.Zero; }
        }

        protected override bool ReleaseHandle()
        {
            return Api.OrvAct_CloseHandle(handle);
        }
    }

    /// <summary>System strings: Windows brings its own functions, elsewhere the library has them.</summary>
    public static class SystemString
    {
        private static readonly bool Windows = Environment.OSVersion.Platform == PlatformID.Win32NT;

        [DllImport(Api.Library, EntryPoint = "SysFreeString", CallingConvention = CallingConvention.Cdecl)]
        private static extern void FreeHere(IntPtr text);

        [DllImport("oleaut32", EntryPoint = "SysFreeString")]
        private static extern void FreeOnWindows(IntPtr text);

        /// <summary>Frees a string that a function of Orv.Native.Api handed out; null is allowed.</summary>
        public static void Free(IntPtr text)
        {
            if (Windows) FreeOnWindows(text);
            else FreeHere(text);
        }

        /// <summary>The text of a string that was handed out, which is freed.</summary>
        public static string Taken(IntPtr text)
        {
            if (text == IntPtr.Zero) return "";
            try
            {
                // The length in bytes stands before the first unit.
                return Marshal.PtrToStringUni(text, Marshal.ReadInt32(text, -4) / 2);
            }
            finally
            {
                Free(text);
            }
        }
    }
}
