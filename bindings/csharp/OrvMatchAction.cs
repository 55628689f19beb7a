using System;
using System.Runtime.InteropServices;
using Orv.Native;

namespace Orv
{
    /// <summary>A pattern over actions: a name, and the values that an action must have.</summary>
    public sealed class OrvMatchAction : OrvAction
    {
        public OrvMatchAction(string name) : base(Api.TalvecMatchAct_CreateActionByName(Checked(name))) { }

        internal OrvMatchAction(OrvHandle handle) : base(handle) { }

        /// <summary>The match action of a technical text, which begins with @.</summary>
        /// <exception cref="OrvException">The text holds no match action.</exception>
        public new static OrvMatchAction Parse(string text)
        {
            OrvAction found = OrvAction.Parse(text);
            var match = found as OrvMatchAction;
            if (match != null) return match;
            found.Dispose();
            throw new OrvException("the text is not that of a match action");
        }

        /// <summary>For people; takes no part in matching.</summary>
        public string Description
        {
            get
            {
                var text = IntPtr.Zero;
                Require(Api.OrvMatchAct_GetDescriptionW(Handle, ref text), "the description cannot be read");
                return Marshal.PtrToStringUni(text);
            }
            set { Require(Api.OrvMatchAct_SetDescriptionW(Handle, value), "the description cannot be written"); }
        }

        public bool Matches(OrvAction action)
        {
            byte answer = 0;
            Require(Api.OrvMatchAct_Matches(Handle, action.Handle, ref answer), "the actions cannot be compared");
            return answer != 0;
        }

        /// <summary>An action with the values of this one, and what it lacks from an example, which may be null.
        /// </summary>
        public OrvAction CreateAction(OrvAction example = null)
        {
            OrvHandle made;
            Require(Api.OrvMatchAct_CreateActionFromTemplate(Handle, example == null ? OrvHandle.Null : example.Handle,
                                                             out made), "no action can be made of it");
            return Wrap(made);
        }
    }
}
