using System;
using System.Collections;
using System.Collections.Generic;
using System.Linq;
using System.Runtime.InteropServices;
using Orv.Native;

namespace Orv
{
    /// <summary>An action: a name, and parameters that are found by name in any case. An object is for one thread at a
    /// time.</summary>
    public class OrvAction : IEnumerable<KeyValuePair<string, object>>, IEquatable<OrvAction>, IDisposable, ICloneable
    {
        private delegate uint CountCall(IntPtr self);
        private delegate uint NameCall(IntPtr self, [MarshalAs(UnmanagedType.LPWStr)] string name);
        private delegate byte HasCall(IntPtr self, [MarshalAs(UnmanagedType.LPWStr)] string name);
        private delegate void RemoveCall(IntPtr self, [MarshalAs(UnmanagedType.LPWStr)] string name);
        private delegate void EnumerateCall(IntPtr self, IntPtr sink);
        private delegate void ParameterCall(IntPtr self, IntPtr name, uint kind, uint enumType);
        private delegate byte ReadSetCall(IntPtr self, [MarshalAs(UnmanagedType.LPWStr)] string name,
                                          out IntPtr items, out ulong count);
        private delegate void WriteSetCall(IntPtr self, [MarshalAs(UnmanagedType.LPWStr)] string name,
                                           [In] TOrvResultDataItem[] items, ulong count);

        /// <summary>For functions of Orv.Native.Api.</summary>
        public OrvHandle Handle { get; private set; }

        /// <summary>A new action; known to the catalogue or not.</summary>
        public OrvAction(string name) : this(Api.Talvec_Action_CreateActionByName(Checked(name))) { }

        internal OrvAction(OrvHandle handle)
        {
            if (handle.IsInvalid) throw OrvException.Last("there is no action");
            Handle = handle;
        }

        /// <summary>The action of a technical text.</summary>
        /// <exception cref="OrvException">The text holds no action.</exception>
        public static OrvAction Parse(string text)
        {
            uint consumed = 0;
            return Wrap(Api.OrvAct_CreateFromTextBufferW(text, (uint)text.Length, 0, UIntPtr.Zero, ref consumed));
        }

        /// <summary>The action of a buffer in binary form, which must hold nothing else.</summary>
        public static OrvAction FromBytes(byte[] data)
        {
            uint consumed = 0;
            var action = Wrap(Api.OrvAct_CreateFromBinBuffer(data, (uint)data.Length, 0, ref consumed));
            if (consumed == data.Length) return action;
            action.Dispose();
            throw new OrvException("the bytes are not those of one action");
        }

        /// <summary>An object of the class that fits the handle.</summary>
        internal static OrvAction Wrap(OrvHandle handle)
        {
            if (handle.IsInvalid) throw OrvException.Last("there is no action");
            uint kind = 0, code = 0;
            Api.Talvec_Action_GetMessageClass(handle, ref kind);
            if (kind == Api.ORV_MESSAGE_MATCH_ACTION) return new OrvMatchAction(handle);
            Api.OrvAct_GetActionCode(handle, ref code);
            return Actions.Typed.Of(code, handle);
        }

        public void Dispose()
        {
            Handle.Dispose();
        }

        protected static void Require(bool done, string otherwise)
        {
            if (!done) throw OrvException.Last(otherwise);
        }

        /// <summary>A text without a zero character, where the library would end it.</summary>
        protected static string Checked(string text)
        {
            if (text == null) throw new ArgumentNullException("text");
            if (text.IndexOf('\0') >= 0) throw new ArgumentException("a text cannot hold a zero character");
            return text;
        }

        // ---- what it is ----

        /// <summary>The name in the catalogue's spelling, or as it was given.</summary>
        public string Name
        {
            get
            {
                var text = IntPtr.Zero;
                Require(Api.OrvAct_GetActionNameW(Handle, ref text), "the action has no name");
                return Marshal.PtrToStringUni(text);
            }
        }

        /// <summary>The code; 0 for an action that the catalogue does not know.</summary>
        public uint Code
        {
            get
            {
                uint code = 0;
                Require(Api.OrvAct_GetActionCode(Handle, ref code), "the action has no code");
                return code;
            }
        }

        // ---- forms ----

        /// <summary>The technical text, which Parse reads back.</summary>
        public string ToText()
        {
            return Stored((buffer, size) => Store(buffer, ref size, false) ? size : 0, Measured(false));
        }

        /// <summary>The text for people.</summary>
        public string ToPlain()
        {
            return Stored((buffer, size) => Store(buffer, ref size, true) ? size : 0, Measured(true));
        }

        private bool Store(char[] buffer, ref uint size, bool plain)
        {
            return Api.OrvAct_StoreToTextBufferW(Handle, buffer, size, plain, UIntPtr.Zero, ref size);
        }

        private uint Measured(bool plain)
        {
            uint size = 0;
            Store(null, ref size, plain);
            return size;
        }

        /// <summary>The JSON form. Parameters of a priority above the limit are left out.</summary>
        public string ToJson(bool wrap = true, uint limit = uint.MaxValue)
        {
            uint required = 0;
            var limits = new[] { limit };
            Api.OrvAct_StoreToJson(Handle, null, 0, ref required, wrap, limits);
            return Stored((buffer, size) =>
                Api.OrvAct_StoreToJson(Handle, buffer, size, ref size, wrap, limits) ? size : 0, required);
        }

        private static string Stored(Func<char[], uint, uint> store, uint size)
        {
            if (size == 0) throw OrvException.Last("the action has no such text");
            var buffer = new char[size];
            Require(store(buffer, size) != 0, "the action has no such text");
            return new string(buffer, 0, (int)size - 1);
        }

        /// <summary>The binary form, which keeps everything.</summary>
        public byte[] ToBytes()
        {
            uint size = 0;
            Api.OrvAct_StoreToBinBuffer(Handle, null, 0, ref size);
            var buffer = new byte[size];
            Require(Api.OrvAct_StoreToBinBuffer(Handle, buffer, size, ref size), "the action has no binary form");
            return buffer;
        }

        public override string ToString()
        {
            return ToText();
        }

        // ---- comparing and copying ----

        public bool Equals(OrvAction other)
        {
            if (other == null) return false;
            byte equal = 0;
            Require(Api.OrvAct_Equal(Handle, other.Handle, ref equal), "the actions cannot be compared");
            return equal != 0;
        }

        public override bool Equals(object other)
        {
            return Equals(other as OrvAction);
        }

        /// <summary>Of the name only, since parameters change.</summary>
        public override int GetHashCode()
        {
            return StringComparer.OrdinalIgnoreCase.GetHashCode(Name);
        }

        public OrvAction Clone()
        {
            OrvHandle copy;
            Require(Api.OrvAct_CloneHandle(Handle, out copy), "the action cannot be copied");
            return Wrap(copy);
        }

        object ICloneable.Clone()
        {
            return Clone();
        }

        /// <summary>A match action that asks for all that this action holds.</summary>
        public OrvMatchAction ToMatchAction()
        {
            OrvHandle match;
            Require(Api.OrvAct_CreateMatchActionFromTemplate(Handle, out match), "no match action can be made of it");
            return new OrvMatchAction(match);
        }

        // ---- parameters ----

        /// <summary>The operation of the object's table, which the flat functions lack.</summary>
        private T Call<T>(Operation operation, Func<Delegate, IntPtr, T> use, Type type)
        {
            bool kept = false;
            Handle.DangerousAddRef(ref kept);
            try
            {
                IntPtr self = Handle.DangerousGetHandle();
                IntPtr address = Marshal.ReadIntPtr(Marshal.ReadIntPtr(self), (int)operation * IntPtr.Size);
                return use(Marshal.GetDelegateForFunctionPointer(address, type), self);
            }
            finally
            {
                if (kept) Handle.DangerousRelease();
            }
        }

        public int Count
        {
            get
            {
                return Call(Operation.GetParameterCount, (call, self) => (int)((CountCall)call)(self),
                            typeof(CountCall));
            }
        }

        public bool Has(string name)
        {
            return Call(Operation.HasParameter, (call, self) => ((HasCall)call)(self, Checked(name)) != 0,
                        typeof(HasCall));
        }

        /// <summary>False if it was absent.</summary>
        public bool Remove(string name)
        {
            bool had = Has(name);
            Call(Operation.RemoveParameter, (call, self) =>
            {
                ((RemoveCall)call)(self, name);
                return 0;
            }, typeof(RemoveCall));
            return had;
        }

        /// <summary>How a parameter is stored; None if it is absent.</summary>
        public Kind KindOf(string name)
        {
            return (Kind)Call(Operation.GetParameterType, (call, self) => ((NameCall)call)(self, Checked(name)),
                              typeof(NameCall));
        }

        /// <summary>The id of the enum of a value; 0 for none.</summary>
        public uint EnumOf(string name)
        {
            return Call(Operation.GetParameterEnum, (call, self) => ((NameCall)call)(self, Checked(name)),
                        typeof(NameCall));
        }

        /// <summary>A value: null if the parameter is absent; setting null removes it. A value that is set keeps
        /// its own kind, whatever the catalogue declares: the typed classes know the declared kinds.</summary>
        public object this[string name]
        {
            get { return Read(name); }
            set { Write(name, value); }
        }

        private object Read(string name)
        {
            var record = new TOrvParameterValue();
            if (!Api.Talvec_Action_GetParameterByName(Handle, Checked(name), ref record)) return null;
            if (record.text != IntPtr.Zero && record.kind != (uint)Kind.String) SystemString.Free(record.text);
            switch ((Kind)record.kind)
            {
                case Kind.Boolean: return record.payload_boolean != 0;
                case Kind.Numeric32Bit: return record.payload_int32;
                case Kind.Numeric64Bit: return record.payload_int64;
                case Kind.NumericDouble: return record.payload_real;
                case Kind.String: return SystemString.Taken(record.text);
                case Kind.DateTime: return new OrvDate(record.payload_dateTime.value);
                case Kind.Guid: return record.payload_guid;
                case Kind.EventType:
                    return new EventType(Marshal.PtrToStringUni(record.payload_eventType_name),
                                         record.payload_eventType_id);
                case Kind.MediaChannel: return ChannelOf(record.payload_channel);
                case Kind.Resource:
                    return new Resource(Marshal.PtrToStringUni(record.payload_resource.name),
                                        record.payload_resource.guid);
                case Kind.Rect: return new Rect(record.payload_int64);
                default: return ReadDataSet(name);
            }
        }

        private static Channel ChannelOf(TOrvChannelValue value)
        {
            return new Channel(value.number, Marshal.PtrToStringUni(value.name), value.id);
        }

        private DataItem[] ReadDataSet(string name)
        {
            return Call(Operation.GetResultDataSet, (call, self) =>
            {
                IntPtr items;
                ulong count;
                bool there = ((ReadSetCall)call)(self, name, out items, out count) != 0 && items != IntPtr.Zero;
                if (!there) return new DataItem[0];
                var found = new DataItem[count];
                int size = Marshal.SizeOf(typeof(TOrvResultDataItem));
                for (int at = 0; at < found.Length; ++at)
                {
                    var row = (TOrvResultDataItem)Marshal.PtrToStructure(items + at * size, typeof(TOrvResultDataItem));
                    found[at] = new DataItem(row.field0, row.field1, row.field2, row.field3, row.field4,
                                             Marshal.PtrToStringUni(row.name));
                }
                return found;
            }, typeof(ReadSetCall));
        }

        private void Write(string name, object value, uint enumId = 0)
        {
            if (value == null) Remove(name);
            else if (value is DataItem[]) WriteDataSet(name, (DataItem[])value);
            else
            {
                var texts = new List<IntPtr>();
                try
                {
                    TOrvParameterValue record = RecordOf(value, texts);
                    record.enum_type = enumId != 0 ? enumId : EnumIdOf(value);
                    Require(Api.Talvec_Action_SetParameterByName(Handle, Checked(name), new[] { record }),
                            "the value cannot be stored");
                }
                finally
                {
                    texts.ForEach(Marshal.FreeHGlobal);
                }
            }
        }

        private static uint EnumIdOf(object value)
        {
            uint id;
            return EnumIds.ByType.TryGetValue(value.GetType(), out id) ? id : 0;
        }

        /// <summary>The record of a value; the texts have to be freed when it has been used.</summary>
        private static TOrvParameterValue RecordOf(object value, List<IntPtr> texts)
        {
            var record = new TOrvParameterValue();
            if (value is bool) record.payload_boolean = Of(ref record, Kind.Boolean, (byte)((bool)value ? 1 : 0));
            else if (value is int || value is Enum)
                record.payload_int32 = Of(ref record, Kind.Numeric32Bit, Convert.ToInt32(value));
            else if (value is long) record.payload_int64 = Of(ref record, Kind.Numeric64Bit, (long)value);
            else if (value is double) record.payload_real = Of(ref record, Kind.NumericDouble, (double)value);
            else if (value is string) record.text = Of(ref record, Kind.String, Text((string)value, texts));
            else if (value is OrvDate)
                record.payload_dateTime.value = Of(ref record, Kind.DateTime, ((OrvDate)value).Word);
            else if (value is DateTimeOffset) return RecordOf((OrvDate)(DateTimeOffset)value, texts);
            else if (value is Guid) record.payload_guid = Of(ref record, Kind.Guid, (Guid)value);
            else if (value is Rect) record.payload_int64 = Of(ref record, Kind.Rect, ((Rect)value).Word);
            else FillNamed(ref record, value, texts);
            return record;
        }

        private static T Of<T>(ref TOrvParameterValue record, Kind kind, T value)
        {
            record.kind = (uint)kind;
            return value;
        }

        private static void FillNamed(ref TOrvParameterValue record, object value, List<IntPtr> texts)
        {
            if (value is Channel)
            {
                var channel = (Channel)value;
                record.kind = (uint)Kind.MediaChannel;
                record.payload_channel.id = channel.Id;
                record.payload_channel.number = channel.Number;
                record.payload_channel.name = Text(channel.Name, texts);
            }
            else if (value is EventType)
            {
                record.kind = (uint)Kind.EventType;
                record.payload_eventType_id = ((EventType)value).Id;
                record.payload_eventType_name = Text(((EventType)value).Name, texts);
            }
            else if (value is Resource)
            {
                record.kind = (uint)Kind.Resource;
                record.payload_resource.guid = ((Resource)value).Guid;
                record.payload_resource.name = Text(((Resource)value).Name, texts);
            }
            else throw new ArgumentException("no parameter holds a value of the type " + value.GetType().Name);
        }

        /// <summary>A text in the form of a system string: its length in bytes stands before the first unit.
        /// </summary>
        private static IntPtr Text(string text, List<IntPtr> texts)
        {
            text = Checked(text ?? "");
            IntPtr block = Marshal.AllocHGlobal(8 + 2 * text.Length + 2);
            texts.Add(block);
            Marshal.WriteInt32(block, 4, 2 * text.Length);
            Marshal.Copy(text.ToCharArray(), 0, block + 8, text.Length);
            Marshal.WriteInt16(block, 8 + 2 * text.Length, 0);
            return block + 8;
        }

        private void WriteDataSet(string name, DataItem[] items)
        {
            var texts = new List<IntPtr>();
            try
            {
                var rows = items.Select(item => new TOrvResultDataItem
                {
                    field0 = item.Field0, field1 = item.Field1, field2 = item.Field2, field3 = item.Field3,
                    field4 = item.Field4, name = Text(item.Name, texts)
                }).ToArray();
                Call(Operation.SetResultDataSet, (call, self) =>
                {
                    ((WriteSetCall)call)(self, Checked(name), rows, (ulong)rows.Length);
                    return 0;
                }, typeof(WriteSetCall));
            }
            finally
            {
                texts.ForEach(Marshal.FreeHGlobal);
            }
        }

        // ---- for the typed classes: null stands for an absent parameter ----

        private T? As<T>(string name) where T : struct
        {
            object value = Read(name);
            return value is T ? (T?)value : null;
        }

        protected bool? GetBoolean(string name) { return As<bool>(name); }
        protected void SetBoolean(string name, bool? value) { Write(name, value); }
        protected int? GetInt32(string name) { return As<int>(name); }
        protected void SetInt32(string name, int? value) { Write(name, value); }
        protected long? GetInt64(string name) { return As<long>(name); }
        protected void SetInt64(string name, long? value) { Write(name, value); }
        protected double? GetDouble(string name) { return As<double>(name); }
        protected void SetDouble(string name, double? value) { Write(name, value); }
        protected string GetText(string name) { return Read(name) as string; }
        protected void SetText(string name, string value) { Write(name, value); }
        protected OrvDate? GetDate(string name) { return As<OrvDate>(name); }
        protected void SetDate(string name, OrvDate? value) { Write(name, value); }
        protected Guid? GetGuid(string name) { return As<Guid>(name); }
        protected void SetGuid(string name, Guid? value) { Write(name, value); }
        protected EventType? GetEventType(string name) { return As<EventType>(name); }
        protected void SetEventType(string name, EventType? value) { Write(name, value); }
        protected Channel? GetChannel(string name) { return As<Channel>(name); }
        protected void SetChannel(string name, Channel? value) { Write(name, value); }
        protected Resource? GetResource(string name) { return As<Resource>(name); }
        protected void SetResource(string name, Resource? value) { Write(name, value); }
        protected Rect? GetRect(string name) { return As<Rect>(name); }
        protected void SetRect(string name, Rect? value) { Write(name, value); }
        protected DataItem[] GetDataSet(string name) { return Read(name) as DataItem[]; }
        protected void SetDataSet(string name, DataItem[] value) { Write(name, value); }

        protected T? GetEnum<T>(string name) where T : struct
        {
            int? value = As<int>(name);
            return value.HasValue ? (T?)Enum.ToObject(typeof(T), value.Value) : null;
        }

        protected void SetEnum<T>(string name, T? value) where T : struct
        {
            Write(name, value);
        }

        /// <summary>Stores a number with the id of its enum.</summary>
        public void SetEnum(string name, int value, uint enumId)
        {
            Write(name, value, enumId);
        }

        // ---- enumeration ----

        /// <summary>Names and values: the declared parameters in the order of their declaration, then the others by
        /// name.</summary>
        public IEnumerator<KeyValuePair<string, object>> GetEnumerator()
        {
            List<string> declared = Declared();
            return Names().OrderBy(name => Position(declared, name))
                .Select(name => new KeyValuePair<string, object>(name, Read(name))).ToList().GetEnumerator();
        }

        IEnumerator IEnumerable.GetEnumerator()
        {
            return GetEnumerator();
        }

        private static int Position(List<string> declared, string name)
        {
            int found = declared.FindIndex(it => string.Equals(it, name, StringComparison.OrdinalIgnoreCase));
            return found < 0 ? declared.Count : found;
        }

        private List<string> Declared()
        {
            uint code = Code;
            if (code == 0) return new List<string>();
            var records = new TTalvecParameterPlainInfo[Api.Talvec_Action_GetNumberOfActionParameters(code)];
            Api.Talvec_Action_EnumerateActionParameters(records, (uint)records.Length, code);
            return records.Select(record => Marshal.PtrToStringUni(record.NameW)).ToList();
        }

        /// <summary>The names in the order of the library, which hands them to a sink: a record that begins with a
        /// pointer to a table, whose fourth operation is called.</summary>
        private List<string> Names()
        {
            var names = new List<string>();
            ParameterCall take = (self, name, kind, enumType) => names.Add(Marshal.PtrToStringUni(name));
            IntPtr sink = Marshal.AllocHGlobal(5 * IntPtr.Size);
            try
            {
                for (int at = 1; at < 4; ++at) Marshal.WriteIntPtr(sink, at * IntPtr.Size, IntPtr.Zero);
                Marshal.WriteIntPtr(sink, 0, sink + IntPtr.Size);
                Marshal.WriteIntPtr(sink, 4 * IntPtr.Size, Marshal.GetFunctionPointerForDelegate(take));
                Call(Operation.EnumerateParameters, (call, self) =>
                {
                    ((EnumerateCall)call)(self, sink);
                    return 0;
                }, typeof(EnumerateCall));
            }
            finally
            {
                Marshal.FreeHGlobal(sink);
                GC.KeepAlive(take);
            }
            return names;
        }
    }
}
