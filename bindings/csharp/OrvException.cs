using System;
using System.Runtime.InteropServices;
using Orv.Native;

namespace Orv
{
    /// <summary>A call failed. Code 1008 with a sub-code is the library's own, another code the system's; 0 is anything
    /// else.</summary>
    public sealed class OrvException : Exception
    {
        public uint Code { get; private set; }
        public uint SubCode { get; private set; }

        /// <summary>The class of the failure, as the library names it.</summary>
        public string ErrorClass { get; private set; }

        public OrvException(string message, uint code = 0, uint subCode = 0, string errorClass = "") : base(message)
        {
            Code = code;
            SubCode = subCode;
            ErrorClass = errorClass;
        }

        /// <summary>The last failure of this thread, with the message `otherwise` if the library gives none. Throws
        /// OutOfMemoryException if the call lacked memory, which says nothing about the action or the text.</summary>
        internal static OrvException Last(string otherwise)
        {
            var info = new TOrvLastErrorInfo();
            if (!Api.OrvAct_GetLastError(ref info)) return new OrvException(otherwise);
            string message = Marshal.PtrToStringUni(info.messageW);
            if (info.code == 0 && message == "std::bad_alloc") throw new OutOfMemoryException();
            return new OrvException(message, info.code, info.subCode,
                                    Marshal.PtrToStringAnsi(info.className));
        }
    }
}
