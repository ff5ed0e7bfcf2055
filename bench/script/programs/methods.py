import time

class Counter:
    def __init__(self):
        self.total = 0

    def add(self, amount):
        self.total = self.total + amount

def main():
    c = Counter()
    for i in range(1, 300001):
        c.add(i & 7)
    return c.total

start = time.process_time()
result = main()
print(time.process_time() - start, result)
