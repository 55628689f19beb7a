// Runs the conformance table through the C# layer. bindings/conformance/cases.txt tells the form.
//
//     Conformance.exe TABLE...
using System;
using System.Collections.Generic;
using System.IO;
using System.Linq;
using System.Runtime.InteropServices;
using System.Text;
using Orv;
using Orv.Native;

internal static class Conformance
{
    private sealed class Case
    {
        internal string Name;
        internal readonly Dictionary<string, string> Forms = new Dictionary<string, string>();
        internal readonly List<string[]> Fields = new List<string[]>();
        internal readonly List<string[]> Failures = new List<string[]>();
    }

    private static string current;
    private static bool failed;

    private static int Main(string[] tables)
    {
        int passed = 0, wrong = 0;
        Console.OutputEncoding = new UTF8Encoding(false);
        foreach (Case it in tables.SelectMany(Cases).Concat(new[] { new Case { Name = "the class layer" } }))
        {
            current = it.Name;
            failed = false;
            try
            {
                if (it.Forms.ContainsKey("text")) CheckAction(it);
                it.Failures.ForEach(CheckFailure);
                if (it.Name == "the class layer") CheckClasses();
            }
            catch (Exception error)
            {
                Expect("no exception", "", error.ToString());
            }
            if (failed) ++wrong;
            else ++passed;
        }
        current = "at the end";
        Expect("objects still open", "0", Api.OrvAct_GetNumberOfOpenHandles().ToString());
        Console.WriteLine("{0} passed, {1} failed", passed, wrong);
        return wrong > 0 || passed < 2 || failed ? 1 : 0;
    }

    private static IEnumerable<Case> Cases(string path)
    {
        Case it = null;
        foreach (string line in File.ReadLines(path))
        {
            int tab = line.IndexOf('\t');
            if (tab < 0 || line[0] == '#') continue;
            string word = line.Substring(0, tab), rest = line.Substring(tab + 1);
            if (word == "case")
            {
                if (it != null) yield return it;
                it = new Case { Name = rest };
            }
            else if (word == "field") it.Fields.Add(rest.Split('\t'));
            else if (word == "fail") it.Failures.Add(rest.Split('\t'));
            else it.Forms[word] = rest;
        }
        if (it != null) yield return it;
    }

    private static void Expect(string what, string expected, string actual)
    {
        if (expected == actual) return;
        failed = true;
        Console.WriteLine("{0}: {1}\n  expected {2}\n  and got  {3}", current, what, expected, actual);
    }

    // ---- actions ----

    private static void CheckAction(Case it)
    {
        string technical;
        if (!it.Forms.TryGetValue("technical", out technical)) technical = it.Forms["text"];
        using (OrvAction action = OrvAction.Parse(it.Forms["text"]))
        {
            foreach (var form in it.Forms) CheckForm(action, form.Key, form.Value);
            Expect("technical", technical, action.ToText());
            using (OrvAction again = OrvAction.FromBytes(Bytes(it.Forms["hex"])))
            {
                Expect("read from bytes", technical, again.ToText());
                Expect("equal", "True", again.Equals(action).ToString());
            }
            Expect("number of parameters", it.Fields.Count.ToString(), action.Count.ToString());
            it.Fields.ForEach(field => CheckField(action, field));
            if (!(action is OrvMatchAction)) CheckCopy(action);
        }
    }

    private static void CheckForm(OrvAction action, string form, string expected)
    {
        if (form == "plain") Expect(form, expected, action.ToPlain());
        else if (form == "json") Expect(form, expected, action.ToJson());
        else if (form == "hex") Expect(form, expected, Digits(action.ToBytes()));
    }

    private static void CheckField(OrvAction action, string[] field)
    {
        string name = field[0], value = field.Length > 3 ? field[3] : "";
        Expect(name + " is there", "True", action.Has(name).ToString());
        Expect(name + " kind", field[1] + " " + field[2], action.KindOf(name) + " " + action.EnumOf(name));
        Expect(name, value, Shown(action[name]));
    }

    /// <summary>An action that is taken apart and put together again is the same.</summary>
    private static void CheckCopy(OrvAction action)
    {
        using (var copy = new OrvAction(action.Name))
        {
            foreach (KeyValuePair<string, object> row in action)
            {
                uint enumId = action.EnumOf(row.Key);
                if (enumId == 0) copy[row.Key] = row.Value;
                else copy.SetEnum(row.Key, (int)row.Value, enumId);
            }
            if (!copy.Equals(action)) Expect("copied by fields", Digits(action.ToBytes()), Digits(copy.ToBytes()));
        }
    }

    private static string Shown(object value)
    {
        if (value is bool) return (bool)value ? "1" : "0";
        if (value is double) return BitConverter.DoubleToInt64Bits((double)value).ToString("x16");
        if (value is OrvDate) return ((OrvDate)value).Word.ToString();
        if (value is EventType) return ((EventType)value).Id + "|" + ((EventType)value).Name;
        if (value is Resource) return ((Resource)value).Guid + "|" + ((Resource)value).Name;
        if (value is Channel)
        {
            var channel = (Channel)value;
            return channel.Id + "|" + channel.Number + "|" + channel.Name;
        }
        if (value is Rect)
        {
            var rect = (Rect)value;
            return rect.Top + "," + rect.Left + "," + rect.Bottom + "," + rect.Right;
        }
        var items = value as DataItem[];
        if (items == null) return Convert.ToString(value);
        return string.Join(", ", items.Select(it => string.Format("{0} {1} {2} {3} {4} '{5}'", it.Field0, it.Field1,
                                                                  it.Field2, it.Field3, it.Field4, it.Name)));
    }

    private static byte[] Bytes(string digits)
    {
        return Enumerable.Range(0, digits.Length / 2)
            .Select(at => Convert.ToByte(digits.Substring(2 * at, 2), 16)).ToArray();
    }

    private static string Digits(byte[] bytes)
    {
        return BitConverter.ToString(bytes).Replace("-", "").ToLowerInvariant();
    }

    // ---- failures ----

    private static void CheckFailure(string[] row)
    {
        Expect(row[0], string.Join("\t", row.Skip(3)), Told(row[0], row[1], uint.Parse(row[2])));
    }

    private static string Told(string call, string argument, uint number)
    {
        var converted = IntPtr.Zero;
        uint consumed = 0;
        switch (call)
        {
            case "parse": return Answer(Made(Api.OrvAct_CreateFromTextBufferW(
                argument, Api.ORV_LENGTH_TERMINATED, Api.ORV_EXPECT_ANY, UIntPtr.Zero, ref consumed)));
            case "bytes":
                byte[] data = Bytes(argument);
                bool made = Made(Api.OrvAct_CreateFromBinBuffer(data, (uint)data.Length, number, ref consumed));
                return Answer(made, consumed.ToString());
            case "from-sibling":
                return Answer(Api.Talvec_Action_ConvertHeskActionTextToOrvActionText(argument, ref converted));
            case "to-sibling":
                return Answer(Api.Talvec_Action_ConvertOrvActionTextToHeskActionText(argument, ref converted));
        }
        // The answer is complete before the action ends, which is a call with a last error of its own.
        using (OrvAction action = OrvAction.Parse(argument)) return ToldOf(action.Handle, call, number);
    }

    private static string ToldOf(OrvHandle handle, string call, uint number)
    {
        switch (call)
        {
            case "role": return Answer(Api.OrvAct_SetVideoOutput(handle, new TOrvChannelValue[1]));
            case "decode": return Answer(Api.OrvAct_DecodeABCDisconnect(handle));
            case "record":
                var record = new TOrvEventData { size = number };
                byte unused = 0;
                return Answer(Api.OrvAct_GetActionEventData(handle, ref record, ref unused));
            case "room":
                uint required = 0;
                bool done = Api.OrvAct_StoreToTextBufferW(handle, new char[256], number, false, UIntPtr.Zero,
                                                          ref required);
                return Answer(done, required.ToString());
            default: throw new ArgumentException("no such call: " + call);
        }
    }

    private static string Answer(bool done, string second = "-")
    {
        var info = new TOrvLastErrorInfo();
        string error = "-\t-\t-";
        if (Api.OrvAct_GetLastError(ref info))
            error = info.code + "\t" + info.subCode + "\t" + Marshal.PtrToStringUni(info.messageW);
        return (done ? "true\t" : "false\t") + second + "\t" + error;
    }

    private static bool Made(OrvHandle handle)
    {
        using (handle) return !handle.IsInvalid;
    }

    // ---- what the table does not reach ----

    private static void CheckClasses()
    {
        using (var pan = new Orv.Actions.PanLeft { Camera = 7, Speed = 3 })
        using (OrvAction read = OrvAction.Parse("PanLeft (zoo: 1, Speed: 3, alpha: 2.5, Camera: 7)"))
        using (OrvAction copy = pan.Clone())
        using (OrvMatchAction rule = pan.ToMatchAction())
        using (var other = new OrvAction("PanRight"))
        {
            Expect("typed", "7", ((Orv.Actions.PanLeft)read).Camera.Value.Number.ToString());
            Expect("typed copy", "3", ((Orv.Actions.PanLeft)copy).Speed.ToString());
            Expect("as declared", "Camera Speed alpha zoo", string.Join(" ", read.Select(it => it.Key)));
            Expect("equal", "True False", copy.Equals((object)pan) + " " + copy.Equals((object)read));
            Expect("matches", "True False", rule.Matches(read) + " " + rule.Matches(other));
            pan.Speed = null;
            Expect("null removes", "PanLeft (Camera: 7)", pan.ToText());
        }
        using (var alarm = new Orv.Actions.SensorVideoAlarm { SensorType = VideoSensorKind.VMD })
            Expect("enum", "4104", alarm.EnumOf("SensorType").ToString());
        var date = new DateTimeOffset(2026, 11, 15, 3, 10, 43, 123, new TimeSpan(5, 30, 0));
        Expect("date", date.ToString("o"), ((OrvDate)date).ToDateTimeOffset().ToString("o"));
        Expect("raised", "4/5 Ulmo::EUlmoDateTime", Raised("A (x: \"2026/13/15 03:10:43,123 GMT+01:00\")"));
        Expect("raised", "0/0 ", Raised("no action"));
    }

    private static string Raised(string text)
    {
        try
        {
            OrvAction.Parse(text).Dispose();
            return "nothing";
        }
        catch (OrvException error)
        {
            return error.Code + "/" + error.SubCode + " " + error.ErrorClass;
        }
    }
}
