using System;

namespace Orv
{
    /// <summary>How a value is stored.</summary>
    public enum Kind
    {
        None = 0,
        Boolean = 1,
        Numeric32Bit = 2,
        Numeric64Bit = 3,
        NumericDouble = 4,
        String = 5,
        DateTime = 6,
        Guid = 7,
        EventType = 8,
        MediaChannel = 9,
        Resource = 10,
        Rect = 11,
        ResultDataSet = 12
    }

    /// <summary>A camera, an output, a contact.</summary>
    public struct Channel : IEquatable<Channel>
    {
        public readonly uint Number;
        public readonly string Name;
        public readonly ulong Id;

        public Channel(uint number, string name = "", ulong id = 0)
        {
            Number = number;
            Name = name ?? "";
            Id = id;
        }

        /// <summary>The channel with a global number.</summary>
        public static implicit operator Channel(int number)
        {
            return new Channel(checked((uint)number));
        }

        public bool Equals(Channel other)
        {
            return Number == other.Number && Id == other.Id && (Name ?? "") == (other.Name ?? "");
        }

        public override bool Equals(object other)
        {
            return other is Channel && Equals((Channel)other);
        }

        public override int GetHashCode()
        {
            return Id.GetHashCode() ^ Number.GetHashCode();
        }

        public override string ToString()
        {
            return "{ " + Id + ", " + Number + ", \"" + Name + "\" }";
        }
    }

    public struct EventType
    {
        public readonly string Name;
        public readonly ulong Id;

        public EventType(string name, ulong id = 0)
        {
            Name = name ?? "";
            Id = id;
        }
    }

    public struct Resource
    {
        public readonly string Name;
        public readonly Guid Guid;

        public Resource(string name, Guid guid = default(Guid))
        {
            Name = name ?? "";
            Guid = guid;
        }
    }

    public struct Rect
    {
        public readonly short Top, Left, Bottom, Right;

        public Rect(short top, short left, short bottom, short right)
        {
            Top = top;
            Left = left;
            Bottom = bottom;
            Right = right;
        }

        internal Rect(long word) : this((short)word, (short)(word >> 16), (short)(word >> 32), (short)(word >> 48)) { }

        internal long Word
        {
            get
            {
                return (ushort)Top | (long)(ushort)Left << 16 | (long)(ushort)Bottom << 32 | (long)Right << 48;
            }
        }
    }

    /// <summary>One item of a list of results.</summary>
    public struct DataItem
    {
        public readonly ushort Field0, Field1;
        public readonly short Field2, Field3;
        public readonly int Field4;
        public readonly string Name;

        public DataItem(ushort field0, ushort field1, short field2, short field3, int field4, string name)
        {
            Field0 = field0;
            Field1 = field1;
            Field2 = field2;
            Field3 = field3;
            Field4 = field4;
            Name = name ?? "";
        }
    }

    /// <summary>An instant with the offset of the zone that it was taken in, to the millisecond.</summary>
    public struct OrvDate
    {
        private const long Mask = (1L << 48) - 1;
        private static readonly long Start = new DateTime(1601, 1, 1).Ticks;

        /// <summary>Milliseconds since 1601 UTC in the low 48 bits, above them the bias in minutes.</summary>
        public readonly ulong Word;

        public OrvDate(ulong word)
        {
            Word = word;
        }

        public static implicit operator OrvDate(DateTimeOffset date)
        {
            long milliseconds = (date.UtcTicks - Start) / TimeSpan.TicksPerMillisecond;
            if (date.UtcTicks < Start)
                throw new ArgumentOutOfRangeException("date", "a date begins with 1601-01-01 UTC");
            var bias = (short)-(date.Offset.Ticks / TimeSpan.TicksPerMinute);
            return new OrvDate((ulong)(ushort)bias << 48 | (ulong)milliseconds);
        }

        /// <summary>Throws for what DateTimeOffset cannot hold: after the year 9999, or with an offset above 14 hours.
        /// </summary>
        public DateTimeOffset ToDateTimeOffset()
        {
            var bias = (short)(Word >> 48);
            long ticks = Start + ((long)Word & Mask) * TimeSpan.TicksPerMillisecond;
            return new DateTimeOffset(ticks, TimeSpan.Zero).ToOffset(TimeSpan.FromMinutes(-bias));
        }
    }
}
